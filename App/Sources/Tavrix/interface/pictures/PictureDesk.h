#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "device/thumbnails/ThumbnailStore.h"
#include "foundation/StringMap.h"
#include "model/AppModel.h"

namespace tavrix::window {

class WindowSession;

/// The thumbnails of the window: those of the open source, and the last ones that were shown. Used
/// on the main loop only. During a transfer only what is already known is shown.
class PictureDesk : public QObject {
  Q_OBJECT

 public:
  /// `session` must outlive the desk.
  explicit PictureDesk(WindowSession& session);
  ~PictureDesk() override;

  /// Returns a thumbnail that was shown lately, or a null image. `side` is its longest side in
  /// pixels, also below.
  QImage known(const MediaAsset& asset, std::uint32_t side) const;
  /// Requests a thumbnail. `take` is called later, perhaps twice: the second one is better.
  [[nodiscard]] ThumbnailRequest request(const MediaAsset& asset, std::uint32_t side,
                                         std::function<void(const QImage&)> take);
  /// Returns the playing time of a film whose thumbnail was shown; nullopt while it is unknown.
  std::optional<std::chrono::milliseconds> filmLength(const MediaAsset& asset) const;
  /// Returns true if every requested thumbnail is there.
  bool isCalm() const { return *pending_ == 0; }

 Q_SIGNALS:
  /// `film` is the id of an asset whose playing time is known now.
  void filmLengthKnown(const std::string& film);

 private:
  void follow(const StateChange& change);
  void takeSource();
  void noteFilmLength(const MediaAsset& film, std::optional<std::chrono::milliseconds> length);

  WindowSession& session_;
  std::unique_ptr<ThumbnailStore> store_;  ///< null if pictures cannot be opened
  std::shared_ptr<const SourceFiles> files_;
  std::shared_ptr<int> pending_ = std::make_shared<int>(0);
  QCache<QByteArray, QImage> shown_;
  StringMap<std::chrono::milliseconds> filmLengths_;  ///< by asset id
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
