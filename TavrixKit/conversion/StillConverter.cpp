#include "conversion/StillConverter.h"

namespace tavrix {

ConversionResult StillConverter::convert(const ConversionFiles&, double,
                                         const ConversionProgress&) {
  throw ConversionError{ConversionFailure::unsupported};
}

}  // namespace tavrix
