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

/// A thread for calls that may take forever, one at a time: whoever asks waits only so long, and
/// the thread is left alone with a call that does not come back. So what a call uses belongs to the
/// call.
class PatientThread {
 public:
  enum class Outcome {
    done,
    late,     ///< it took longer than the patience, or an earlier call is still under way
    stopped,  ///< a stop was asked for
  };

  explicit PatientThread(std::chrono::milliseconds patience) : patience_(patience) {}
  /// The thread ends with its call; waits for that a moment, unless the call was given up.
  ~PatientThread();
  PatientThread(const PatientThread&) = delete;
  PatientThread& operator=(const PatientThread&) = delete;

  /// Whether a call that was given up is still under way.
  bool isBusy() const;
  /// Runs `work` on the thread.
  Outcome run(std::function<void()> work, const std::stop_token& stop);
  /// Hands over a last call, for which nobody waits, unless an earlier one is under way.
  void finish(std::function<void()> work);

  /// What a call gave, if it came back in time.
  template <typename Result>
  struct Answer {
    Outcome outcome = Outcome::late;
    std::optional<Result> result;
  };
  /// Runs `work` and gives its result; throws what it throws.
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
    bool isGivenUp = false;  ///< nobody waits for the call any more
    bool isClosed = false;
    bool isOver = false;
  };
  static void serve(const std::shared_ptr<Shared>& shared);
  void begin();

  std::chrono::milliseconds patience_;
  std::shared_ptr<Shared> shared_;  ///< from the first call on
};

}  // namespace tavrix
