#pragma once

#include <exception>
#include <string>
#include <utility>

namespace tavrix::cli {

/// The exit status of the program.
enum class ExitStatus {
  done = 0,         ///< everything was done, or there was nothing to do
  someFailed = 1,   ///< the run ended and some files failed
  usage = 2,        ///< the call was wrong; nothing was done
  stopped = 3,      ///< the run could not start, or was stopped
  cancelled = 130,  ///< ended by an interrupt
};

/// Ends a command with one sentence for people.
class CommandFailure : public std::exception {
 public:
  CommandFailure(ExitStatus status, std::string sentence)
      : status_(status), sentence_(std::move(sentence)) {}
  ExitStatus status() const { return status_; }
  const std::string& sentence() const { return sentence_; }
  const char* what() const noexcept override { return "CommandFailure"; }

 private:
  ExitStatus status_;
  std::string sentence_;
};

/// Throws a CommandFailure for a wrong call.
[[noreturn]] inline void failUsage(std::string sentence) {
  throw CommandFailure{ExitStatus::usage, std::move(sentence)};
}

}  // namespace tavrix::cli
