#pragma once

#include <sys/types.h>

#include <chrono>
#include <span>
#include <string>
#include <vector>

#include "transfer/ConversionFailure.h"

namespace tavrix {

/// A running process that has a few descriptors of its parent and nothing else. The destructor
/// kills it unless it has ended.
class ConfinedProcess {
 public:
  /// Starts `program` with `arguments`. The process gets the descriptors as 3, 4 and so on; the
  /// caller keeps its own. Signals are handled in the default way, and the process has a group of
  /// its own: an interrupt from the terminal reaches only the parent, which passes it on. Throws
  /// ConversionError.
  ConfinedProcess(const std::string& program, const std::vector<std::string>& arguments,
                  std::span<const int> descriptors);
  ~ConfinedProcess();
  ConfinedProcess(const ConfinedProcess&) = delete;
  ConfinedProcess& operator=(const ConfinedProcess&) = delete;

  bool isRunning();
  /// Returns the processor time that the process has used; zero if it has ended.
  std::chrono::nanoseconds processorTime() const;
  /// Returns the status from waitpid(). Kills a process that does not end within `patience`.
  int wait(std::chrono::milliseconds patience);

 private:
  int end();

  pid_t id_ = -1;
  int status_ = 0;  ///< valid once `id_` is -1
};

/// Returns the reason why a process ended without a result, from the status of waitpid().
ConversionFailure failureOf(int status);

}  // namespace tavrix
