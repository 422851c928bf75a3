#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <stop_token>
#include <string>

#include "transfer/ConversionFailure.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// A conversion that did not work out; the unconverted file is kept.
class ConversionError : public std::exception {
 public:
  explicit ConversionError(ConversionFailure failure) : failure_(failure) {}
  ConversionFailure failure() const { return failure_; }
  const char* what() const noexcept override { return "ConversionError"; }

 private:
  ConversionFailure failure_;
};

/// Told from time to time how much of one file is converted, 0 to 1, by the thread that converts.
using ConversionProgress = std::function<void(double fraction)>;

/// Re-saves stills as JPEG and videos as H.264. Safe to use from several threads.
class MediaConverter {
 public:
  virtual ~MediaConverter() = default;
  /// Reads the file `input`, an asset's original bytes, and writes the converted one as `output`, a
  /// path beside it that does not exist. Gives the size of what it wrote, in bytes. Throws
  /// ConversionError when the file is to stay as it is, also when `stop` was requested, and
  /// FileError when `output` cannot be written; what it left at `output` is then removed by the
  /// caller.
  virtual std::uint64_t convert(const MediaAsset& asset, const PlannedConversion& conversion,
                                const std::string& input, const std::string& output,
                                const ConversionProgress& progress, std::stop_token stop) = 0;
};

}  // namespace tavrix
