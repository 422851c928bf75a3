#include "foundation/tasks/CoalescedWork.h"

#include <utility>

namespace tavrix {

struct CoalescedWork::State {
  MainLoop& loop;
  Background background;
  bool isRunning = false;
  Work requested{};  ///< the latest request that came while a pass was running
};

CoalescedWork::CoalescedWork(MainLoop& loop, Background background)
    : state_(std::make_shared<State>(State{loop, std::move(background)})) {}

bool CoalescedWork::isBusy() const { return state_->isRunning; }

void CoalescedWork::request(Work work) {
  if (state_->isRunning) {
    state_->requested = std::move(work);
  } else {
    launch(state_, std::move(work));
  }
}

void CoalescedWork::launch(const std::shared_ptr<State>& state, Work work) {
  state->isRunning = true;
  // The values that the work holds and its result may be large; both are freed in the background.
  state->background([weak = std::weak_ptr{state}, &loop = state->loop, work = std::move(work)] {
    loop.post([weak, apply = work()]() mutable {
      if (const auto alive = weak.lock()) land(alive, std::move(apply));
    });
  });
}

void CoalescedWork::land(const std::shared_ptr<State>& state, Apply apply) {
  state->isRunning = false;
  if (state->requested) {
    launch(state, std::exchange(state->requested, nullptr));
  } else {
    apply();
  }
  state->background([ended = std::move(apply)] {});
}

}  // namespace tavrix
