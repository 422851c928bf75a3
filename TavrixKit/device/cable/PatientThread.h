#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace tavrix {

/// A thread for calls that may take forever, one at a time. The caller waits for a limited time. A
/// call that does not return is abandoned on the thread, so a call must own everything that it
/// uses.
class PatientThread {
 public:
  enum class Outcome {
    done,
    late,     ///< it took longer than the patience, or an earlier call is still running
    stopped,  ///< a stop was requested
  };

  explicit PatientThread(std::chrono::milliseconds patience) : patience_(patience) {}
  /// Lets the thread end with its current call. Waits at most 1 s for that, and not at all if the
  /// call was given up.
  ~PatientThread();
  PatientThread(const PatientThread&) = delete;
  PatientThread& operator=(const PatientThread&) = delete;

  /// Returns true if a call that was given up is still running.
  bool isBusy() const;
  /// Waits for a call that was given up, as long as the patience allows. Returns true if no call is
  /// running.
  bool awaitIdle(const std::stop_token& stop);
  /// Runs `work` on the thread and waits for it as long as the patience allows.
  Outcome run(std::function<void()> work, const std::stop_token& stop);
  /// Starts a last call without waiting for it. Does nothing if an earlier call is still running.
  void finish(std::function<void()> work);

  /// The result of a call, if the call returned in time.
  template <typename Result>
  struct Answer {
    Outcome outcome = Outcome::late;
    std::optional<Result> result;
  };
  /// Runs `work` as run() does and returns its result. Throws what `work` throws.
  template <typename Work>
  auto ask(Work work, const std::stop_token& stop) -> Answer<decltype(work())> {
    struct Call {
      std::optional<decltype(work())> result;
      std::exception_ptr error;
    };
    const auto call = std::make_shared<Call>();
    const Outcome outcome = run(
        [call, work = std::make_shared<Work>(std::move(work))] {
          try {
            call->result.emplace((*work)());
          } catch (...) {
            call->error = std::current_exception();
          }
        },
        stop);
    if (outcome != Outcome::done) return {outcome, std::nullopt};
    if (call->error) std::rethrow_exception(call->error);
    return {outcome, std::move(call->result)};
  }

 private:
  struct Shared {
    std::mutex mutex;
    std::condition_variable_any changed;
    std::function<void()> work;
    bool isBusy = false;
    bool isGivenUp = false;  ///< the caller no longer waits for the call
    bool isClosed = false;
    bool isOver = false;
  };
  static void serve(const std::shared_ptr<Shared>& shared);
  void begin();

  std::chrono::milliseconds patience_;
  std::shared_ptr<Shared> shared_;  ///< null before the first call
};

}  // namespace tavrix
