#include "conversion/codecs/VideoConverter.h"

#include "conversion/codecs/FilmConversion.h"

namespace tavrix {

ConversionResult VideoConverter::convert(const ConversionFiles& files,
                                         const ConversionProgress& progress) {
  // The messages of the libraries are not for users.
  av_log_set_level(AV_LOG_QUIET);
  return FilmConversion{files, progress}.run();
}

}  // namespace tavrix
