#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/CommandLine.h"
#include "cli/platform/Interrupts.h"
#include "cli/platform/Programs.h"
#include "cli/platform/Terminal.h"
#include "cli/printing/TerminalLine.h"
#include "cli/printing/TerminalSink.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/StoredSettings.h"
#include "foundation/ProcessLimits.h"
#include "foundation/Text.h"
#include "foundation/TimeZone.h"
#include "services/platform/Resources.h"

namespace tavrix::cli {
namespace {

/// Writes to a stream of the program. Throws OutputClosed if the reader has closed it, OutputError
/// for any other failure.
class StreamSink : public TextSink {
 public:
  explicit StreamSink(std::FILE* stream) : stream_(stream) {}

  void write(std::string_view text) override {
    if (std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) fail();
  }
  void flush() {
    if (std::fflush(stream_) != 0) fail();
  }

 private:
  [[noreturn]] void fail() {
    const int code = errno;
    if (code == EPIPE) throw OutputClosed{};
    throw OutputError{code};
  }

  std::FILE* stream_;
};

/// Writes to standard error. Ignores failures, because there is nowhere left to report them.
class ErrorSink : public TextSink {
 public:
  void write(std::string_view text) override {
    hasOpenLine_ = !text.ends_with('\n') && !text.ends_with(clearLine);
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
  }
  /// Erases a line that was not ended, such as a progress bar. May be called on any thread.
  void eraseOpenLine() {
    if (hasOpenLine_) write(clearLine);
  }

 private:
  std::atomic<bool> hasOpenLine_ = false;
};

/// Returns the columns behind standard error; nullopt if it cannot show a line that is redrawn.
std::optional<int> columnsForProgress(const Environment& environment) {
  if (variable(environment, "TERM") == "dumb") return std::nullopt;
  return terminalColumns(StandardStream::error);
}

int run(const std::vector<std::string>& arguments) {
  reportFileSizeLimit();
  ErrorSink err;
  Interrupts interrupts{[&] { err.eraseOpenLine(); }};
  const auto phones = Phones::openBrowser();
  StreamSink out{stdout};
  TerminalSink terminal{out};
  const auto outColumns = terminalColumns(StandardStream::output);
  const auto sleep = openSleepInhibitor();
  const Environment environment = processEnvironment();
  const auto defaults = openDefaults(environment);
  Surroundings surroundings{
      .out = outColumns ? static_cast<TextSink&>(terminal) : out,
      .err = err,
      .environment = environment,
      .defaults = defaults.get(),
      .systemLocaleID = systemLocaleID(),
      .messagesLocaleID = systemMessagesLocaleID(),
      .systemTimeZoneID = systemTimeZoneID(),
      .gazetteerPath = resourcePath("gazetteer.bin"),
      .conversionProgram = helperPath("tavrix-convert"),
      .outColumns = outColumns,
      .errColumns = columnsForProgress(environment),
      .now =
          [] {
            return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
          },
      .newID = randomUuid,
      .catchInterrupts = [&] { return interrupts.token(); },
      .phones = phones.get(),
      .openBus = openUSBBus,
      .sleep = sleep.get(),
      .windowProgram = helperPath("tavrix-window"),
      .canStart = canStartProgram,
      .become =
          [&](const std::string& program, const std::vector<std::string>& words) {
            out.flush();
            return becomeProgram(program, words);
          },
  };
  ExitStatus status = runCommandLine(arguments, surroundings);
  try {
    out.flush();
  } catch (const OutputClosed&) {
    // The status is the same if the reader closes the output earlier.
    return static_cast<int>(status);
  } catch (const OutputError&) {
    const auto failure =
        failureOf(languageOf(arguments, surroundings), "", std::current_exception());
    Messages{err, messagesForm(arguments, surroundings)}.error(failure.sentence());
    status = failure.status();
  }
  return static_cast<int>(status);
}

}  // namespace
}  // namespace tavrix::cli

int main(int argc, char** argv) { return tavrix::cli::run({argv + 1, argv + argc}); }
