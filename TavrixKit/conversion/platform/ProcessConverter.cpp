#include "conversion/ProcessConverter.h"

#include <algorithm>

#include "conversion/ResultCheck.h"
#include "conversion/platform/DescriptorReader.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

std::uint64_t sizeOf(const FileDescriptor& file) { return DescriptorReader{file.number()}.size(); }

/// Checks the open files: another program may put other files under their names meanwhile.
bool isWhole(const PlannedConversion& conversion, const FileDescriptor& source,
             const FileDescriptor& result, const ConversionResult& told) {
  DescriptorReader before{source.number()};
  DescriptorReader after{result.number()};
  return std::holds_alternative<planned_conversion::Jpeg>(conversion)
             ? isWholeStill(before, after, told)
             : isWholeFilm(before, after, told);
}

}  // namespace

ConversionLimits limitsOf(const PlannedConversion& conversion, std::uint64_t sourceBytes) {
  ConversionLimits limits;
  if (!std::holds_alternative<planned_conversion::H264>(conversion)) return limits;
  // A recording of a screen that stands still has few bytes for much work: 2.4 seconds of processor
  // time for the 12 KB of one second.
  constexpr std::uint64_t bytesASecond = 2500;
  constexpr std::uint64_t leastSeconds = 300;
  constexpr std::uint64_t leastBytes = std::uint64_t{256} << 20U;
  constexpr std::uint64_t growth = 16;
  constexpr std::uint64_t mostBytes = std::uint64_t{1} << 40U;
  const std::uint64_t mostSeconds = std::chrono::seconds{std::chrono::hours{12}}.count();
  limits.memoryBytes = std::uint64_t{4} << 30U;
  limits.processorTime =
      std::chrono::seconds{std::min(mostSeconds, leastSeconds + sourceBytes / bytesASecond)};
  limits.resultBytes = std::min(mostBytes, leastBytes + std::min(sourceBytes, mostBytes) * growth);
  return limits;
}

std::uint64_t ProcessConverter::convert(const MediaAsset&, const PlannedConversion& conversion,
                                        Folder& folder, const std::string& input,
                                        const std::string& output,
                                        const ConversionProgress& progress, std::stop_token stop) {
  const FileDescriptor source = folder.openDescriptor(input);
  const FileDescriptor result = folder.createDescriptor(output);
  const ConversionLimits limits = limits_.value_or(limitsOf(conversion, sizeOf(source)));
  const ConversionResult told =
      ConversionProcess::run(program_, conversion, {source.number(), result.number()}, limits,
                             folder.path() + "/" + output, progress, std::move(stop));
  if (!isWhole(conversion, source, result, told))
    throw ConversionError{ConversionFailure::wrongResult};
  return sizeOf(result);
}

}  // namespace tavrix
