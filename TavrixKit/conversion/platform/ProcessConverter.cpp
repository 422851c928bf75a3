#include "conversion/ProcessConverter.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "conversion/ResultCheck.h"
#include "conversion/platform/DescriptorReader.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

FileDescriptor opened(const std::string& path, int flags) {
  // Without O_NONBLOCK, opening a named pipe would wait for the other end.
  FileDescriptor file{::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666)};
  if (file.isOpen()) return file;
  const bool isNew = (flags & O_CREAT) != 0;
  throw FileError{isNew ? FileOperation::create : FileOperation::open, path, errno};
}

/// Returns the size of a regular file. Throws FileError, also for any other file.
std::uint64_t sizeOf(const FileDescriptor& file, const std::string& path) {
  struct stat status{};
  if (::fstat(file.number(), &status) != 0) throw FileError{FileOperation::status, path, errno};
  if (!S_ISREG(status.st_mode)) throw FileError{FileOperation::open, path, EINVAL};
  return static_cast<std::uint64_t>(status.st_size);
}

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
                                        const std::string& input, const std::string& output,
                                        const ConversionProgress& progress, std::stop_token stop) {
  const FileDescriptor source = opened(input, O_RDONLY);
  const std::uint64_t sourceBytes = sizeOf(source, input);
  const FileDescriptor result = opened(output, O_RDWR | O_CREAT | O_EXCL);
  const ConversionResult told = ConversionProcess::run(
      program_, conversion, {source.number(), result.number()},
      limits_.value_or(limitsOf(conversion, sourceBytes)), output, progress, std::move(stop));
  if (!isWhole(conversion, source, result, told))
    throw ConversionError{ConversionFailure::wrongResult};
  return sizeOf(result, output);
}

}  // namespace tavrix
