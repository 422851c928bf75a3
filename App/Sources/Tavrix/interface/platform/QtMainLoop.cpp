#include "interface/platform/QtMainLoop.h"

#include <QCoreApplication>
#include <QEvent>

namespace tavrix::window {
namespace {

QEvent::Type wakeEvent() {
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

}  // namespace

void QtMainLoop::postAfter(Duration delay, Task task) {
  const Moment due = now() + delay;
  bool isNext = false;
  {
    const std::lock_guard lock{mutex_};
    const auto next = tasks_.nextDue();
    isNext = !next || due < *next;
    tasks_.add(due, std::move(task));
  }
  if (isNext) QCoreApplication::postEvent(this, new QEvent{wakeEvent()});
}

bool QtMainLoop::event(QEvent* event) {
  if (event->type() != wakeEvent() && event->type() != QEvent::Timer) {
    return QObject::event(event);
  }
  runDue();
  return true;
}

void QtMainLoop::runDue() {
  // Tasks that are posted meanwhile wait for the next turn, so that the window can be painted.
  const Moment moment = now();
  while (const Task task = takeDue(moment)) task();
  arm();
}

MainLoop::Task QtMainLoop::takeDue(Moment moment) {
  const std::lock_guard lock{mutex_};
  const auto next = tasks_.nextDue();
  return next && *next <= moment ? tasks_.take() : Task{};
}

void QtMainLoop::arm() {
  const std::lock_guard lock{mutex_};
  const auto next = tasks_.nextDue();
  timer_.stop();
  if (!next) return;
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*next - now());
  if (wait.count() <= 0) {
    QCoreApplication::postEvent(this, new QEvent{wakeEvent()});
  } else {
    constexpr std::chrono::milliseconds longest{std::chrono::hours{24}};
    timer_.start(static_cast<int>(std::min(wait, longest).count()), Qt::PreciseTimer, this);
  }
}

}  // namespace tavrix::window
