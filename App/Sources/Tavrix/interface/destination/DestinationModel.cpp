#include "interface/destination/DestinationModel.h"

#include <QDir>

#include "foundation/Text.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/DayText.h"
#include "interface/words/PathText.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

static_assert(static_cast<int>(DestinationModel::Bad) ==
              static_cast<int>(DestinationAdvice::Tone::bad));

}  // namespace

DestinationModel::DestinationModel(WindowSession& session, const Words& words)
    : session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::phase)) subject_ = {};
        lookUpLast();
        using enum StateTopic;
        for (const StateTopic topic : {rows, checks, counters, settings, destination}) {
          if (change.has(topic)) return refresh();
        }
      })) {
  connect(&words, &Words::languageChanged, this, &DestinationModel::refresh);
  lookUpLast();
  refresh();
}

DestinationModel* DestinationModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new DestinationModel{EngineObjects::of<WindowSession>(*engine),
                              EngineObjects::of<Words>(*engine)};
}

void DestinationModel::refresh() {
  advice_ = adviceOf(words_.language(), model_.state(), session_.surroundings().systemLocaleID);
  Q_EMIT changed();
}

void DestinationModel::lookUpLast() {
  const auto phone = model_.phone();
  const Subject subject{phone ? phone->hash : std::string{}, model_.state().destination};
  if (subject == subject_) return;
  if (subject.phoneHash != subject_.phoneHash) last_ = {};
  subject_ = subject;
  last_.here.reset();
  if (subject.phoneHash.empty() || !session_.stateFolder()) return;
  looking_.post([this, life = std::weak_ptr{life_}, subject, folder = *session_.stateFolder(),
                 &log = *session_.surroundings().log, &loop = session_.loop()] {
    const LastRuns last = lastRuns(folder, subject.phoneHash, subject.destination, log);
    loop.post([this, life, subject, last] {
      if (!life.lock() || subject != subject_) return;
      last_ = last;
      Q_EMIT changed();
    });
  });
}

QString DestinationModel::status() const {
  std::string text = advice_.status;
  if (advice_.isEverythingInPlace && last_.here) {
    const TimeZone& zone = model_.state().settings->gathering.timeZone;
    const std::string day = dayInWords(words_.language(), zone.dateAt(*last_.here));
    text = say(words_.language(), sentences::lastTransferred, day) + (text.empty() ? "" : " · ") +
           text;
  }
  return QString::fromStdString(text);
}

QString DestinationModel::path() const {
  const auto& destination = model_.state().destination;
  return destination ? shortPath(QString::fromStdString(*destination)) : QString{};
}

void DestinationModel::setPath(const QString& path) {
  const QString typed = path.trimmed();
  if (typed == this->path()) return;
  model_.setDestination(typed.isEmpty() ? std::nullopt
                                        : std::optional{wholePath(typed).toStdString()});
}

QUrl DestinationModel::startFolder() const {
  const auto& destination = model_.state().destination;
  const auto& folder = destination ? destination : last_.destination;
  return QUrl::fromLocalFile(folder ? QString::fromStdString(*folder) : QDir::homePath());
}

QStringList DestinationModel::warnings() const {
  QStringList warnings;
  for (const std::string& text : advice_.warnings) warnings << QString::fromStdString(text);
  return warnings;
}

QString DestinationModel::lastText() const {
  if (!last_.destination || model_.state().destination) return {};
  const QString path = shortPath(QString::fromStdString(printable(*last_.destination)));
  return QString::fromStdString(say(words_.language(), sentences::asLastTime, path.toStdString()));
}

void DestinationModel::choose(const QUrl& folder) {
  if (folder.isLocalFile()) model_.setDestination(folder.toLocalFile().toStdString());
}

void DestinationModel::keepNames() {
  if (advice_.keepingNames) model_.changeSettings(*advice_.keepingNames);
}

void DestinationModel::chooseLast() {
  if (last_.destination) model_.setDestination(last_.destination);
}

}  // namespace tavrix::window
