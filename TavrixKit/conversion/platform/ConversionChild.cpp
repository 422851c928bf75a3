// The life of a process that converts one file.

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "conversion/ConversionProcess.h"
#include "conversion/ConversionReport.h"
#include "conversion/StillConverter.h"
#include "conversion/VideoConverter.h"
#include "conversion/platform/Confinement.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

constexpr ConversionFiles files{3, 4};
constexpr int report = 5;
constexpr int argumentCount = 7;

void tell(const std::string& line) {
  // A parent that has gone ends this process by the signal.
  [[maybe_unused]] const ssize_t count = ::write(report, line.data(), line.size());
}

/// Tells the progress in steps of a hundredth, and as a sign of life while there is none for long.
class ProgressTeller {
 public:
  void operator()(double fraction) {
    const auto now = Clock::now();
    if (fraction < last_ + 0.01 && now - lastSign_ < std::chrono::seconds{1}) return;
    last_ = fraction;
    lastSign_ = now;
    tell(ConversionReport::progressLine(fraction));
  }

 private:
  using Clock = std::chrono::steady_clock;

  double last_ = -1;
  Clock::time_point lastSign_;
};

ConversionResult convert(const std::string& conversion, double quality) {
  if (conversion == textOf(PlannedConversion{planned_conversion::Jpeg{}}))
    return StillConverter::convert(files, quality, ProgressTeller{});
  if (conversion == textOf(PlannedConversion{planned_conversion::H264{}}))
    return VideoConverter::convert(files, ProgressTeller{});
  throw ConversionError{ConversionFailure::unsupported};
}

ConversionReport::Ending endingOf(char** argv) {
  try {
    ConversionLimits limits;
    limits.memoryBytes = std::strtoull(argv[4], nullptr, 10);
    limits.processorTime = std::chrono::seconds{std::strtoll(argv[5], nullptr, 10)};
    limits.resultBytes = std::strtoull(argv[6], nullptr, 10);
    if (!confineProcess(limits)) return ConversionFailure::failed;
    return convert(argv[2], std::strtod(argv[3], nullptr));
  } catch (const ConversionError& error) {
    return error.failure();
  } catch (const FileError& error) {
    return ConversionReport::Unwritable{error.code()};
  } catch (const std::bad_alloc&) {
    return ConversionFailure::tooMuchMemory;
  } catch (const std::exception&) {
    return ConversionFailure::damagedInput;
  }
}

}  // namespace

std::optional<int> ConversionProcess::runAsChild(int argc, char** argv) {
  if (argc != argumentCount || std::strcmp(argv[1], argument) != 0) return std::nullopt;
  tell(ConversionReport::endingLine(endingOf(argv)));
  // Nothing of the program's own is left to be put in order.
  ::_exit(0);
}

}  // namespace tavrix
