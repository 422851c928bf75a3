#include "interface/shell/RunAttendant.h"

#include <QGuiApplication>

#include "interface/platform/Notifications.h"
#include "interface/platform/TaskbarProgress.h"
#include "interface/run/ProgressText.h"
#include "interface/run/SummaryFacts.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

constexpr std::chrono::seconds taskbarInterval{1};

bool isTransferring(const AppState& state) {
  return std::holds_alternative<app_phase::Transferring>(state.phase);
}

bool isReading(const AppState& state, const OpenedSource& source) {
  const DeviceState& device = state.device->state;
  const bool isPhone = std::holds_alternative<opened_source::Phone>(source);
  return std::holds_alternative<opened_source::Reading>(source) ||
         (isPhone &&
          (device.is<DeviceState::Enumerating>() || device.is<DeviceState::ReadingMetadata>()));
}

}  // namespace

RunAttendant::RunAttendant(WindowSession& session, const Words& words,
                           std::unique_ptr<SleepInhibitor> inhibitor)
    : session_(session),
      model_(session.model()),
      words_(words),
      inhibitor_(std::move(inhibitor)),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&session, &WindowSession::sourceChanged, this, &RunAttendant::stayAwake);
}

void RunAttendant::follow(const StateChange& change) {
  if (change.has(StateTopic::device) || change.has(StateTopic::phase)) stayAwake();
  const bool hasEnded = isTransferring(change.before) && !isTransferring(change.after);
  if (change.has(StateTopic::progress) || hasEnded) showProgress(change.after);
  if (hasEnded) reportEnd();
}

void RunAttendant::stayAwake() {
  if (!inhibitor_) return;
  const AppState& state = model_.state();
  if (isTransferring(state)) {
    inhibitor_->hold(say(words_.language(), sentences::inhibitCopying));
  } else if (isReading(state, session_.source())) {
    inhibitor_->hold(say(words_.language(), sentences::inhibitReading));
  } else {
    inhibitor_->release();
  }
}

void RunAttendant::showProgress(const AppState& state) {
  if (!isTransferring(state) || !state.progress) {
    shownAt_.reset();
    return showInTaskbar(std::nullopt);
  }
  const auto now = session_.loop().now();
  if (shownAt_ && now - *shownAt_ < taskbarInterval) return;
  shownAt_ = now;
  showInTaskbar(doneShare(*state.progress));
}

void RunAttendant::reportEnd() {
  const Run* const run = model_.run();
  if (run == nullptr || QGuiApplication::focusWindow() != nullptr) return;
  const Language language = words_.language();
  const Headline headline = headlineOf(language, *run);
  notify(QString::fromStdString(headline.verdict), QString::fromStdString(headline.written));
}

}  // namespace tavrix::window
