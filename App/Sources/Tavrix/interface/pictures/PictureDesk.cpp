#include "interface/pictures/PictureDesk.h"

#include "interface/pictures/LandedFiles.h"
#include "interface/session/WindowSession.h"
#include "services/Thumbnails.h"

namespace tavrix::window {
namespace {

constexpr qsizetype shownBytes = qsizetype{64} << 20;

QByteArray keyOf(const MediaAsset& asset, std::uint32_t side) {
  return QByteArray::fromStdString(ThumbnailKey::of(asset, "", side).text());
}

std::unique_ptr<ThumbnailStore> openStore(const WindowSurroundings& around) {
  if (!around.conversionProgram) return nullptr;
  return openThumbnails({.loop = around.loop,
                         .conversionProgram = *around.conversionProgram,
                         .now = around.now,
                         .folder = thumbnailFolderOf(around.environment, std::nullopt)},
                        around.environment);
}

}  // namespace

PictureDesk::PictureDesk(WindowSession& session)
    : session_(session),
      store_(openStore(session.surroundings())),
      shown_(shownBytes),
      subscription_(session.model().subscribe([this](const StateChange& c) { follow(c); })) {
  takeSource();
}

PictureDesk::~PictureDesk() = default;

void PictureDesk::takeSource() {
  const auto files = session_.model().files();
  if (files == files_ || store_ == nullptr) return;
  // Pictures of the former source stay until another one is there: a phone may come back.
  if (files == nullptr && files_ != nullptr) {
    if (const auto access = files_->pictures()) store_->setSource(access->key, std::nullopt);
  }
  files_ = files;
  if (files == nullptr) return;
  shown_.clear();
  filmLengths_.clear();
  if (auto access = files->pictures()) store_->setSource(access->key, std::move(access->files));
}

void PictureDesk::follow(const StateChange& change) {
  takeSource();
  if (store_ == nullptr) return;
  const bool was = std::holds_alternative<app_phase::Transferring>(change.before.phase);
  const bool is = std::holds_alternative<app_phase::Transferring>(change.after.phase);
  if (is && !was) {
    store_->beginTransfer(
        [&model = session_.model()](const MediaAsset& asset) { return landedPath(model, asset); });
  }
  if (was && is && change.has(StateTopic::progress) && *pending_ > 0) store_->landedFilesChanged();
  if (was && !is) store_->endTransfer();
}

QImage PictureDesk::known(const MediaAsset& asset, std::uint32_t side) const {
  const QImage* const image = shown_.object(keyOf(asset, side));
  return image == nullptr ? QImage{} : *image;
}

std::optional<std::chrono::milliseconds> PictureDesk::filmLength(const MediaAsset& asset) const {
  const auto found = filmLengths_.find(asset.id());
  return found == filmLengths_.end() ? std::nullopt : std::optional{found->second};
}

void PictureDesk::noteFilmLength(const MediaAsset& film,
                                 std::optional<std::chrono::milliseconds> length) {
  if (!length || filmLength(film) == length) return;
  filmLengths_.insert_or_assign(std::string{film.id()}, *length);
  Q_EMIT filmLengthKnown(std::string{film.id()});
}

ThumbnailRequest PictureDesk::request(const MediaAsset& asset, std::uint32_t side,
                                      std::function<void(const QImage&)> take) {
  if (store_ == nullptr) return {};
  // Counts the request until its first answer, or until it is withdrawn.
  ++*pending_;
  const std::shared_ptr<void> waiting{nullptr, [count = pending_](void*) { --*count; }};
  auto state = std::make_shared<std::shared_ptr<void>>(waiting);
  return store_->request(asset, side, ThumbnailPriority::onScreen,
                         [this, state, asset, key = keyOf(asset, side),
                          take = std::move(take)](const ThumbnailAnswer& answer) {
                           if (answer.isFinal || answer.state == ThumbnailAnswer::State::notNow)
                             state->reset();
                           if (answer.image == nullptr) return;
                           const auto& jpeg = answer.image->jpeg;
                           QImage image = QImage::fromData(
                               QByteArrayView{jpeg.data(), static_cast<qsizetype>(jpeg.size())},
                               "JPG");
                           if (image.isNull()) return;
                           shown_.insert(key, new QImage{image}, image.sizeInBytes());
                           take(image);
                           noteFilmLength(asset, answer.filmLength);
                         });
}

}  // namespace tavrix::window
