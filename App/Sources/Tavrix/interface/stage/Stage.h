#pragma once

#include <memory>
#include <optional>
#include <string>

#include "foundation/Time.h"
#include "foundation/tasks/MainLoop.h"
#include "interface/stage/EventfulFiles.h"

namespace tavrix::window {

class WindowSession;

/// A state of the window that a developer wants to see, with clocks that make it the same each
/// time. No phone is followed on a stage. Functions must be called on the main loop unless they say
/// otherwise.
class Stage {
 public:
  /// Throws std::out_of_range if no state has this name.
  explicit Stage(const std::string& state);

  /// Returns true if a state has this name.
  static bool isKnown(const std::string& state);

  /// Returns a time that passes with the bytes that a run has copied. Callable from any thread.
  Instant now() const;
  /// As now(), for the pace of a run that the window shows.
  MainLoop::Moment paceMoment() const;

  /// Starts to bring the session, which shows its source, into the state.
  void enter(WindowSession& session);
  /// Goes on with it. Returns true once the state is reached. Called again and again.
  bool proceed();

 private:
  struct State;

  /// Gives the model its source with the files with an event.
  void plug();

  const State& state_;
  WindowSession* session_ = nullptr;            ///< once entered
  std::shared_ptr<const EventfulFiles> files_;  ///< of a state with a run
  bool isBack_ = false;                         ///< the source came back after it left
  std::shared_ptr<EventfulFiles::Bytes> bytes_ = std::make_shared<EventfulFiles::Bytes>(0);
};

}  // namespace tavrix::window
