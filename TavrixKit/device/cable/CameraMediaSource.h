#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "device/OddPaths.h"
#include "device/Phones.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Reads the files of a phone on the cable by the ids of their catalogue. When the phone
/// leaves in the middle of a file and comes back, the file goes on where it was.
class CameraMediaSource : public MediaSource {
 public:
  struct Setup {
    PhoneBrowser& browser;
    std::string deviceID;
    /// Called when there is no way to the phone; waits for it and gives whether it is worth trying
    /// again. Without one, its file fails.
    std::function<bool(PhoneError::Kind)> awaitPhone{};
    /// When it is asked for, a call that waits for the phone ends.
    std::stop_token stop{};
    OddPaths oddPaths{};  ///< those of its catalogue
  };

  explicit CameraMediaSource(Setup setup) : setup_(std::move(setup)) {}

  void download(const MediaAsset& asset, DownloadDestination& destination) override;

 private:
  struct Progress {
    std::string path;
    std::string name;
    std::optional<FileStatus> status;  ///< as the phone told it first
    std::uint64_t delivered = 0;       ///< bytes
  };
  void goOn(Progress& progress, DownloadDestination& destination);
  void deliver(PhoneFile& file, Progress& progress, DownloadDestination& destination);

  Setup setup_;
  std::unique_ptr<PhoneFiles> files_;
  std::array<std::vector<char>, 2> buffers_;
};

}  // namespace tavrix
