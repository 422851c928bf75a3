#include "conversion/codecs/platform/ConversionChild.h"

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>

#include "conversion/ConversionProcess.h"
#include "conversion/ConversionReport.h"
#include "conversion/codecs/StillConverter.h"
#include "conversion/codecs/VideoConverter.h"
#include "conversion/codecs/platform/Confinement.h"
#include "conversion/codecs/platform/PictureChild.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

constexpr ConversionFiles files{3, 4};
constexpr int report = 5;
constexpr int argumentCount = 6;
constexpr int pictureArgumentCount = 5;

void tell(const std::string& line) {
  // If the parent is gone, the signal of the broken pipe ends this process.
  [[maybe_unused]] const ssize_t count = ::write(report, line.data(), line.size());
}

/// Returns true if the parent has ended, so that its end could not end this process.
bool isParentGone() {
  pollfd end{.fd = report, .events = 0, .revents = 0};
  return ::poll(&end, 1, 0) > 0 && (end.revents & POLLERR) != 0;
}

/// Reports the progress in steps of a hundredth, and once a second as a sign of life.
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
    limits.memoryBytes = std::strtoull(argv[3], nullptr, 10);
    limits.processorTime = std::chrono::seconds{std::strtoll(argv[4], nullptr, 10)};
    limits.resultBytes = std::strtoull(argv[5], nullptr, 10);
    if (!confineProcess(limits) || isParentGone()) return ConversionFailure::failed;
    return convert(argv[1], std::strtod(argv[2], nullptr));
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

int runConversionChild(int argc, char** argv) {
  if (argc == pictureArgumentCount && argv[1] == std::string_view{"pictures"})
    runPictureChild(argv);
  if (argc != argumentCount) {
    std::fputs("tavrix-convert: started by tavrix\n", stderr);
    return 2;
  }
  tell(ConversionReport::endingLine(endingOf(argv)));
  // The program has nothing left to clean up.
  ::_exit(0);
}

}  // namespace tavrix
