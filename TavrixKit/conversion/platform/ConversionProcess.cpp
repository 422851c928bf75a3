#include "conversion/ConversionProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <vector>

#include "conversion/ConversionReport.h"
#include "conversion/platform/ConfinedProcess.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// The interval between two checks for a stop request.
constexpr auto pause = 50ms;

[[noreturn]] void fail(ConversionFailure failure = ConversionFailure::failed) {
  throw ConversionError{failure};
}

std::vector<std::string> argumentsOf(const PlannedConversion& conversion,
                                     const ConversionLimits& limits) {
  const auto* const jpeg = std::get_if<planned_conversion::Jpeg>(&conversion);
  return {std::string{textOf(conversion)}, std::to_string(jpeg == nullptr ? 0.0 : jpeg->quality),
          std::to_string(limits.memoryBytes), std::to_string(limits.processorTime.count()),
          std::to_string(limits.resultBytes)};
}

/// A running conversion and the reading end of its reports.
class Child {
 public:
  Child(const std::string& program, const PlannedConversion& conversion,
        const ConversionFiles& files, const ConversionLimits& limits) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
      if (lacksDescriptors(errno)) throw FileError{FileOperation::open, "", errno};
      fail();
    }
    report_ = FileDescriptor{ends[0]};
    const FileDescriptor writing{ends[1]};
    const int descriptors[] = {files.source, files.result, writing.number()};
    process_.emplace(program, argumentsOf(conversion, limits), descriptors);
  }

  int report() const { return report_.number(); }
  /// Returns the status from waitpid(). Kills a process that does not end within a second after its
  /// report.
  int wait() { return process_->wait(1s); }

 private:
  FileDescriptor report_;
  std::optional<ConfinedProcess> process_;
};

/// Reads the reports of the process until it closes the pipe.
void listen(const Child& child, ConversionReport::Reader& reader, const ConversionLimits& limits,
            const ConversionProgress& progress, const std::stop_token& stop) {
  auto lastSign = Clock::now();
  while (true) {
    if (stop.stop_requested()) fail();
    if (Clock::now() - lastSign > limits.silence) fail(ConversionFailure::tooSlow);
    pollfd waiting{child.report(), POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(pause.count())) <= 0) continue;
    char buffer[4096];
    const ssize_t count = ::read(child.report(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    lastSign = Clock::now();
    const auto fraction = reader.add({buffer, static_cast<std::size_t>(count)});
    if (fraction && progress) progress(*fraction);
  }
}

}  // namespace

ConversionResult ConversionProcess::run(const std::string& program,
                                        const PlannedConversion& conversion,
                                        const ConversionFiles& files,
                                        const ConversionLimits& limits,
                                        const std::string& resultPath,
                                        const ConversionProgress& progress, std::stop_token stop) {
  Child child{program, conversion, files, limits};
  ConversionReport::Reader reader;
  listen(child, reader, limits, progress, stop);
  const int status = child.wait();
  const auto& ending = reader.ending();
  if (ending) {
    if (const auto* const failure = std::get_if<ConversionFailure>(&*ending)) fail(*failure);
    if (const auto* const unwritable = std::get_if<ConversionReport::Unwritable>(&*ending)) {
      if (unwritable->code == EFBIG) fail(ConversionFailure::tooLarge);
      throw FileError{FileOperation::write, resultPath, unwritable->code};
    }
  }
  const bool isDone = ending && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (!isDone) fail(failureOf(status));
  return std::get<ConversionResult>(*ending);
}

}  // namespace tavrix
