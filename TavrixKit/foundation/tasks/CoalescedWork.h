#pragma once

#include <functional>
#include <memory>

#include "foundation/tasks/Background.h"

namespace tavrix {

/// One kind of background computation of which only the latest request matters. Requests that come
/// during a pass are served by one further pass with the latest of them; the outdated result of the
/// current pass is not applied. Must be used on the main loop only. After its destruction no
/// pending result is applied.
class CoalescedWork {
 public:
  /// Applies a result. Runs on the main loop.
  using Apply = std::function<void()>;
  /// Computes from values that it holds. Runs in the background. Must not throw.
  using Work = std::function<Apply()>;

  CoalescedWork(MainLoop& loop, Background background);

  void request(Work work);
  /// Returns true if a result is still pending.
  bool isBusy() const;

 private:
  struct State;
  static void launch(const std::shared_ptr<State>& state, Work work);
  static void land(const std::shared_ptr<State>& state, Apply apply);

  std::shared_ptr<State> state_;
};

}  // namespace tavrix
