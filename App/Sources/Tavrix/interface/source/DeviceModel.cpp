#include "interface/source/DeviceModel.h"

#include <cmath>

#include "foundation/Sentences.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/TimeText.h"
#include "interface/words/Words.h"

namespace tavrix::window {

static_assert(static_cast<int>(DeviceModel::Done) == static_cast<int>(WaitingFacts::Step::done));

DeviceModel::DeviceModel(WindowSession& session, const Words& words)
    : session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::device)) refresh();
      })) {
  connect(&session, &WindowSession::sourceChanged, this, &DeviceModel::refresh);
  connect(&words, &Words::languageChanged, this, &DeviceModel::refresh);
  refresh();
}

DeviceModel* DeviceModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new DeviceModel{EngineObjects::of<WindowSession>(*engine),
                         EngineObjects::of<Words>(*engine)};
}

void DeviceModel::refresh() {
  const DeviceFacts& device = *model_.state().device;
  facts_ = waitingFacts(words_.language(), device, session_.source());
  progress_ = readingProgress(device, session_.source());
  if (progress_) {
    pace_.measure(session_.paceMoment(), progress_->read);
  } else {
    pace_ = {};
  }
  Q_EMIT changed();
}

QList<int> DeviceModel::steps() const {
  QList<int> steps;
  if (!facts_.steps) return steps;
  for (const WaitingFacts::Step step : *facts_.steps) steps << static_cast<int>(step);
  return steps;
}

QString DeviceModel::pace() const {
  const auto speed = pace_.speed();
  if (!progress_ || !speed || *speed < 1) return {};
  const Language language = words_.language();
  const auto files = static_cast<std::uint64_t>(std::llround(*speed));
  std::string text =
      say(language, sentences::readPerSecond, counted(language, files, tavrix::sentences::files));
  const auto left = pace_.timeLeft(progress_->total - progress_->hits);
  if (left) text += " · " + timeLeftText(language, *left);
  return QString::fromStdString(text);
}

QString DeviceModel::note() const {
  return progress_ ? QString::fromStdString(say(words_.language(), sentences::keptInCache))
                   : QString{};
}

void DeviceModel::retry() { session_.retry(); }

void DeviceModel::stop() { session_.stopReading(); }

}  // namespace tavrix::window
