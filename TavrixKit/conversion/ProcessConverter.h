#pragma once

#include <string>

#include "conversion/ConversionProcess.h"

namespace tavrix {

/// The converter that the program uses. Converts each file in a process of its own and checks the
/// result before accepting it.
class ProcessConverter : public MediaConverter {
 public:
  /// `program` is the path of `tavrix-convert`. `limits` replaces limitsOf() in tests.
  explicit ProcessConverter(std::string program, std::optional<ConversionLimits> limits = {})
      : program_(std::move(program)), limits_(limits) {}

  std::uint64_t convert(const MediaAsset& asset, const PlannedConversion& conversion,
                        Folder& folder, const std::string& input, const std::string& output,
                        const ConversionProgress& progress, std::stop_token stop) override;

 private:
  std::string program_;
  std::optional<ConversionLimits> limits_;
};

/// Returns the limits for one conversion of this kind. Those of a film grow with the bytes of its
/// source, so that a small file cannot keep a processor busy for hours.
ConversionLimits limitsOf(const PlannedConversion& conversion, std::uint64_t sourceBytes);

}  // namespace tavrix
