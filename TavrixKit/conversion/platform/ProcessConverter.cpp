#include "conversion/ProcessConverter.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "conversion/ResultCheck.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

FileDescriptor opened(const std::string& path, int flags) {
  FileDescriptor file{::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, 0666)};
  if (file.isOpen()) return file;
  const bool isNew = (flags & O_CREAT) != 0;
  throw FileError{isNew ? FileOperation::create : FileOperation::open, path, errno};
}

bool isWhole(const PlannedConversion& conversion, const std::string& input,
             const std::string& output, const ConversionResult& told) {
  const auto source = openForRangedReading(input);
  const auto result = openForRangedReading(output);
  if (std::holds_alternative<planned_conversion::Jpeg>(conversion))
    return isWholeStill(*source, *result, told);
  return isWholeFilm(*source, *result, told);
}

}  // namespace

ConversionLimits limitsOf(const PlannedConversion& conversion) {
  ConversionLimits limits;
  if (!std::holds_alternative<planned_conversion::H264>(conversion)) return limits;
  limits.memoryBytes = std::uint64_t{4} << 30U;
  limits.processorTime = std::chrono::hours{12};
  limits.resultBytes = std::uint64_t{1} << 40U;
  return limits;
}

std::uint64_t ProcessConverter::convert(const MediaAsset&, const PlannedConversion& conversion,
                                        const std::string& input, const std::string& output,
                                        const ConversionProgress& progress, std::stop_token stop) {
  const FileDescriptor source = opened(input, O_RDONLY);
  const FileDescriptor result = opened(output, O_RDWR | O_CREAT | O_EXCL);
  const ConversionResult told = ConversionProcess::run(
      program_, conversion, {source.number(), result.number()},
      limits_.value_or(limitsOf(conversion)), output, progress, std::move(stop));
  struct stat status{};
  if (::fstat(result.number(), &status) != 0) throw FileError{FileOperation::status, output, errno};
  if (!isWhole(conversion, input, output, told))
    throw ConversionError{ConversionFailure::wrongResult};
  return static_cast<std::uint64_t>(status.st_size);
}

}  // namespace tavrix
