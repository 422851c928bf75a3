#include "interface/run/ProgressModel.h"

#include <cmath>

#include "foundation/Text.h"
#include "interface/engine/EngineObjects.h"
#include "interface/run/ProgressText.h"
#include "interface/session/WindowSession.h"
#include "interface/words/PathText.h"
#include "interface/words/TimeText.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

const TransferProgressSnapshot noProgress;

QString shown(const std::string& text) { return QString::fromStdString(text); }

QStringList shownAll(const std::array<std::string, 4>& texts) {
  QStringList list;
  for (const std::string& text : texts) list << shown(text);
  return list;
}

StagesOfRun stagesOf(const AppModel& model, const TransferProgressSnapshot& progress) {
  const Run* const run = model.run();
  return {progress, model.state().plannedConversions, run != nullptr && run->outcome.isPacked};
}

}  // namespace

ProgressModel::ProgressModel(WindowSession& session, const Words& words)
    : session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, &ProgressModel::changed);
}

ProgressModel* ProgressModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new ProgressModel{EngineObjects::of<WindowSession>(*engine),
                           EngineObjects::of<Words>(*engine)};
}

void ProgressModel::follow(const StateChange& change) {
  if (!change.has(StateTopic::phase) && !change.has(StateTopic::progress)) return;
  if (change.before.phase != change.after.phase) pace_ = {};
  if (change.after.progress) measure(change);
  Q_EMIT changed();
}

void ProgressModel::measure(const StateChange& change) {
  const auto now = session_.paceMoment();
  const TransferProgressSnapshot& after = *change.after.progress;
  const TransferProgressSnapshot& before = change.before.progress ? *change.before.progress : after;
  // Files that were found complete have an outcome without having been verified.
  const bool isSkip =
      after.filesDone > before.filesDone && after.verifiedCount == before.verifiedCount;
  if (change.after.pause || change.before.pause) {
    pace_.wait(now, after.bytesDone);
  } else if (isSkip) {
    pace_.skip(now, after.bytesDone);
  } else {
    pace_.measure(now, after.bytesDone);
  }
}

const TransferProgressSnapshot& ProgressModel::progress() const {
  const auto& progress = model_.state().progress;
  return progress ? *progress : noProgress;
}

QString ProgressModel::title() const {
  const Run* const run = model_.run();
  const std::string name = run == nullptr ? std::string{} : printable(run->source.deviceName);
  return shown(say(words_.language(), sentences::transferringFrom, name));
}

QString ProgressModel::destination() const {
  const Run* const run = model_.run();
  return run == nullptr ? QString{} : shortPath(shown(printable(run->destination)));
}

double ProgressModel::fraction() const { return doneShare(progress()); }

QString ProgressModel::files() const { return shown(filesDoneText(words_.language(), progress())); }

QString ProgressModel::bytes() const { return shown(bytesDoneText(words_.language(), progress())); }

QString ProgressModel::speed() const {
  const auto speed = pace_.speed();
  if (!speed || model_.state().pause || isFinishing(stagesOf(model_, progress()))) return {};
  const auto bytes = static_cast<std::uint64_t>(std::llround(*speed));
  return shown(
      say(words_.language(), sentences::bytesPerSecond, bytesText(words_.language(), bytes)));
}

QString ProgressModel::timeLeft() const {
  const auto left = pace_.timeLeft(progress().bytesTotal);
  const bool isCopying = progress().stage != TransferStage::packing && !model_.state().pause;
  if (!left || !isCopying || isFinishing(stagesOf(model_, progress()))) return {};
  return shown(timeLeftText(words_.language(), *left));
}

QString ProgressModel::current() const {
  if (isStopping()) return shown(say(words_.language(), sentences::stopping));
  if (isFinishing(stagesOf(model_, progress()))) {
    return shown(say(words_.language(), sentences::finishing));
  }
  return shown(printable(progress().currentFileName.value_or("")));
}

QStringList ProgressModel::stageTitles() const {
  return shownAll(window::stageTitles(words_.language()));
}

QStringList ProgressModel::stageTexts() const {
  return shownAll(window::stageTexts(words_.language(), stagesOf(model_, progress())));
}

QList<bool> ProgressModel::stagesAtWork() const {
  const auto atWork = window::stagesAtWork(stagesOf(model_, progress()));
  const bool isWorking = !model_.state().pause;
  QList<bool> stages;
  for (const bool isAtWork : atWork) stages << (isAtWork && isWorking);
  return stages;
}

QString ProgressModel::waitText() const {
  return shown(transferPausedReason(model_.state(), words_.language()).value_or(""));
}

bool ProgressModel::isRunning() const {
  return std::holds_alternative<app_phase::Transferring>(model_.state().phase);
}

bool ProgressModel::isStopping() const {
  return isRunning() && model_.run()->is<run_stage::Cancelling>();
}

QString ProgressModel::stopText() const {
  const bool isPacked = stagesOf(model_, progress()).isPacked;
  return shown(say(words_.language(), isPacked ? sentences::stopPackingText : sentences::stopText));
}

void ProgressModel::cancel() {
  model_.cancelTransfer();
  Q_EMIT changed();
}

}  // namespace tavrix::window
