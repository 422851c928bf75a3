#include "conversion/VideoConverter.h"

#include "conversion/codecs/FilmConversion.h"

namespace tavrix {

ConversionResult VideoConverter::convert(const ConversionFiles& files,
                                         const ConversionProgress& progress) {
  // What the libraries say is not for people.
  av_log_set_level(AV_LOG_QUIET);
  return FilmConversion{files, progress}.run();
}

}  // namespace tavrix
