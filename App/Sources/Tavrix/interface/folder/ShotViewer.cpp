#include "interface/folder/ShotViewer.h"

#include <QDesktopServices>
#include <QUrl>

#include "grouping/GroupFaces.h"
#include "interface/engine/EngineObjects.h"
#include "interface/folder/ShotText.h"
#include "interface/pictures/ShownPictures.h"
#include "interface/session/WindowSession.h"
#include "interface/words/FolderPageSentences.h"
#include "interface/words/QtText.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

std::string failureText(Language language, PreviewFailure::Kind kind) {
  switch (kind) {
    case PreviewFailure::Kind::notAPicture:
      return say(language, sentences::cannotOpenAlone);
    case PreviewFailure::Kind::noSource:
      return say(language, sentences::cannotOpenAway);
    case PreviewFailure::Kind::sourceFailed:
    case PreviewFailure::Kind::wrongSize:
      return say(language, sentences::cannotOpenRead);
    case PreviewFailure::Kind::diskFull:
      return say(language, sentences::cannotOpenFull);
    case PreviewFailure::Kind::notWritable:
      return say(language, sentences::cannotOpenWrite);
  }
  return {};
}

}  // namespace

ShotViewer::ShotViewer(WindowSession& session, const Words& words, ShotListModel& list)
    : session_(session), words_(words), list_(list) {
  connect(&list, &ShotListModel::currentChanged, this, [this] {
    if (outside_) outside_->stop();
    if (shot() == nullptr) isOpen_ = false;
    setFetching(false, {});
    Q_EMIT changed();
  });
  connect(&list, &ShotListModel::filmLengthsChanged, this, &ShotViewer::changed);
  connect(&words, &Words::languageChanged, this, &ShotViewer::changed);
}

ShotViewer* ShotViewer::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  const int type = qmlTypeId("Tavrix", 1, 0, "ShotListModel");
  return new ShotViewer{EngineObjects::of<WindowSession>(*engine),
                        EngineObjects::of<Words>(*engine),
                        *engine->singletonInstance<ShotListModel*>(type)};
}

const AssetBundle* ShotViewer::shot() const {
  const auto& shots = list_.shots();
  const int row = list_.currentRow();
  return shots && row >= 0 ? &shots->shots()[static_cast<std::size_t>(row)] : nullptr;
}

QString ShotViewer::name() const {
  return isOpen() ? qt(std::string{shot()->primaryPicture().name()}) : QString{};
}

QString ShotViewer::position() const {
  const Language language = words_.language();
  return qt(say(language, sentences::positionOf,
                numberText(language, static_cast<std::uint64_t>(list_.currentRow() + 1)),
                numberText(language, static_cast<std::uint64_t>(list_.count()))));
}

QVariant ShotViewer::pictures() const {
  return isOpen() ? QVariant::fromValue(ShownPictures{{shownFile(*shot())}}) : QVariant{};
}

bool ShotViewer::isFilm() const {
  return isOpen() && shot()->primaryPicture().kind() == MediaKind::video;
}

QVariantList ShotViewer::facts() const {
  QVariantList rows;
  if (!isOpen()) return rows;
  const auto row = static_cast<std::size_t>(list_.currentRow());
  for (const auto& [title, text] :
       ShotText::facts(words_.language(), *list_.shots(), row, list_.filmLength(row))) {
    rows.append(
        QVariantMap{{QStringLiteral("title"), qt(title)}, {QStringLiteral("text"), qt(text)}});
  }
  return rows;
}

void ShotViewer::open() {
  if (shot() == nullptr) return;
  isOpen_ = true;
  Q_EMIT changed();
}

void ShotViewer::close() {
  if (outside_) outside_->stop();
  isOpen_ = false;
  setFetching(false, {});
  Q_EMIT changed();
}

void ShotViewer::showEarlier() { list_.setCurrent(list_.currentRow() - 1); }

void ShotViewer::showLater() { list_.setCurrent(list_.currentRow() + 1); }

void ShotViewer::openOutside() {
  if (!isOpen() || isFetching_) return;
  if (!outside_) outside_.emplace(session_);
  setFetching(true, {});
  const auto report = [this](const PreviewFiles::Progress& progress) {
    const Language language = words_.language();
    setFetching(true, qt(say(language, sentences::fetching, bytesText(language, progress.received),
                             bytesText(language, progress.total))));
  };
  outside_->fetch(
      shownFile(*shot()),
      {.answer = [this](const PreviewResult& result) { take(result); }, .progress = report});
}

void ShotViewer::take(const PreviewResult& result) {
  const Language language = words_.language();
  if (const auto* const failure = std::get_if<PreviewFailure>(&result)) {
    return setFetching(false, qt(failureText(language, failure->kind)));
  }
  const QUrl file = QUrl::fromLocalFile(qt(std::get<std::string>(result)));
  const bool isOpened = QDesktopServices::openUrl(file);
  setFetching(false, isOpened ? QString{} : qt(say(language, sentences::noProgram)));
}

void ShotViewer::setFetching(bool isFetching, const QString& report) {
  isFetching_ = isFetching;
  report_ = report;
  Q_EMIT fetchingChanged();
}

}  // namespace tavrix::window
