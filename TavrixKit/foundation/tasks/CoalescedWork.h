#pragma once

#include <functional>
#include <memory>

#include "model/Background.h"

namespace tavrix {

/// One kind of computation off the main loop, of which only the latest request counts: requests
/// that come while one is computed are served by one further pass, with the latest of them, and the
/// result that they outdated is not shown. Used on the main loop alone. Once it is destroyed,
/// nothing that was under way is applied.
class CoalescedWork {
 public:
  /// Applies a result; runs on the main loop.
  using Apply = std::function<void()>;
  /// Computes from values that it holds; runs in the background. Must not throw.
  using Work = std::function<Apply()>;

  CoalescedWork(MainLoop& loop, Background background);

  void request(Work work);
  /// Whether a result is still to come.
  bool isBusy() const;

 private:
  struct State;
  static void launch(const std::shared_ptr<State>& state, Work work);
  static void land(const std::shared_ptr<State>& state, Apply apply);

  std::shared_ptr<State> state_;
};

}  // namespace tavrix
