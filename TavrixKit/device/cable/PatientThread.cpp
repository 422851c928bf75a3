#include "device/cable/PatientThread.h"

#include <thread>

namespace tavrix {

PatientThread::~PatientThread() {
  constexpr std::chrono::seconds moment{1};
  if (shared_ == nullptr) return;
  std::unique_lock lock{shared_->mutex};
  shared_->isClosed = true;
  shared_->changed.notify_all();
  if (shared_->isGivenUp) return;
  shared_->changed.wait_for(lock, moment, [this] { return shared_->isOver; });
}

bool PatientThread::isBusy() const {
  if (shared_ == nullptr) return false;
  const std::lock_guard lock{shared_->mutex};
  return shared_->isBusy;
}

bool PatientThread::awaitIdle(const std::stop_token& stop) {
  if (shared_ == nullptr) return true;
  std::unique_lock lock{shared_->mutex};
  return shared_->changed.wait_for(lock, stop, patience_, [this] { return !shared_->isBusy; });
}

void PatientThread::begin() {
  if (shared_ != nullptr) return;
  shared_ = std::make_shared<Shared>();
  std::thread{[shared = shared_] { serve(shared); }}.detach();
}

PatientThread::Outcome PatientThread::run(std::function<void()> work, const std::stop_token& stop) {
  if (stop.stop_requested()) return Outcome::stopped;
  begin();
  std::unique_lock lock{shared_->mutex};
  if (shared_->isBusy) return Outcome::late;
  shared_->work = std::move(work);
  shared_->isBusy = true;
  shared_->changed.notify_all();
  shared_->changed.wait_for(lock, stop, patience_, [this] { return !shared_->isBusy; });
  if (!shared_->isBusy) return Outcome::done;
  shared_->isGivenUp = true;
  return stop.stop_requested() ? Outcome::stopped : Outcome::late;
}

void PatientThread::finish(std::function<void()> work) {
  begin();
  const std::lock_guard lock{shared_->mutex};
  if (shared_->isBusy) return;
  shared_->work = std::move(work);
  shared_->isBusy = true;
  shared_->changed.notify_all();
}

void PatientThread::serve(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock{shared->mutex};
  for (;;) {
    shared->changed.wait(lock, [&] { return shared->isClosed || shared->work != nullptr; });
    if (shared->work == nullptr) break;
    {
      const auto work = std::exchange(shared->work, nullptr);
      lock.unlock();
      work();
      // Destroys the work and everything it owns before the caller learns that it is done.
    }
    lock.lock();
    shared->isBusy = false;
    shared->isGivenUp = false;
    shared->changed.notify_all();
  }
  shared->isOver = true;
  shared->changed.notify_all();
}

}  // namespace tavrix
