#include "interface/run/RunPicture.h"

#include "interface/engine/EngineObjects.h"
#include "interface/pictures/LandedFiles.h"
#include "interface/session/WindowSession.h"

namespace tavrix::window {
namespace {

constexpr std::chrono::seconds interval{1};

}  // namespace

RunPicture::RunPicture(WindowSession& session)
    : session_(session),
      subscription_(
          session.model().subscribe([this](const StateChange& change) { follow(change); })) {}

RunPicture* RunPicture::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new RunPicture{EngineObjects::of<WindowSession>(*engine)};
}

void RunPicture::follow(const StateChange& change) {
  if (change.has(StateTopic::phase)) return show({});
  if (!change.has(StateTopic::progress)) return;
  const Instant now = session_.surroundings().now();
  if (now - shownAt_ < interval) return;
  if (const PlannedFile* const file = lastLandedPicture(session_.model())) {
    shownAt_ = now;
    show({{file->asset}});
  }
}

void RunPicture::show(ShownPictures pictures) {
  if (pictures == pictures_) return;
  pictures_ = std::move(pictures);
  Q_EMIT changed();
}

}  // namespace tavrix::window
