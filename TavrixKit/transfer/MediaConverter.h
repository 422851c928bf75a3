#pragma once

#include <cstdint>
#include <exception>
#include <stop_token>
#include <string>

#include "transfer/TransferPlan.h"

namespace tavrix {

/// A conversion that did not work out; the unconverted file is kept.
class ConversionError : public std::exception {
 public:
  enum class Kind { unsupported, damagedInput, failed };

  explicit ConversionError(Kind kind) : kind_(kind) {}
  Kind kind() const { return kind_; }
  const char* what() const noexcept override { return "ConversionError"; }

 private:
  Kind kind_;
};

/// Re-saves stills as JPEG and videos as H.264. Safe to use from several threads.
class MediaConverter {
 public:
  virtual ~MediaConverter() = default;
  /// Reads the file `input`, an asset's original bytes, and writes the converted one as `output`, a
  /// path beside it that does not exist. Gives the size of what it wrote, in bytes. Throws
  /// ConversionError; what it left at `output` is then removed by the caller.
  virtual std::uint64_t convert(const MediaAsset& asset, const PlannedConversion& conversion,
                                const std::string& input, const std::string& output,
                                std::stop_token stop) = 0;
};

}  // namespace tavrix
