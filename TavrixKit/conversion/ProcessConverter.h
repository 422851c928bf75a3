#pragma once

#include <string>

#include "conversion/ConversionProcess.h"

namespace tavrix {

/// The converter that the program uses: each file in a process of its own, its result looked at
/// before it counts.
class ProcessConverter : public MediaConverter {
 public:
  /// `program` is the one whose `main` calls ConversionProcess::runAsChild. Limits other than those
  /// of the kind of conversion are for tests.
  explicit ProcessConverter(std::string program, std::optional<ConversionLimits> limits = {})
      : program_(std::move(program)), limits_(limits) {}

  std::uint64_t convert(const MediaAsset& asset, const PlannedConversion& conversion,
                        const std::string& input, const std::string& output,
                        const ConversionProgress& progress, std::stop_token stop) override;

 private:
  std::string program_;
  std::optional<ConversionLimits> limits_;
};

/// What one conversion of a kind may use.
ConversionLimits limitsOf(const PlannedConversion& conversion);

}  // namespace tavrix
