#include "conversion/VideoConverter.h"

namespace tavrix {

ConversionResult VideoConverter::convert(const ConversionFiles&, const ConversionProgress&) {
  throw ConversionError{ConversionFailure::unsupported};
}

}  // namespace tavrix
