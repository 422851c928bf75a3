#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "device/cable/Phones.h"
#include "device/metadata/OddPaths.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Reads the files of a phone on the cable by the ids of their catalogue. If the phone leaves in
/// the middle of a file and comes back, reading continues where it stopped.
class CameraMediaSource : public MediaSource {
 public:
  struct Setup {
    PhoneBrowser& browser;
    std::string deviceID;
    /// Called if the phone cannot be reached. Waits for the phone and returns true if it is worth
    /// trying again. If it is empty or returns false, the file fails.
    std::function<bool(PhoneError::Kind)> awaitPhone{};
    /// When a stop is requested, a call that waits for the phone ends.
    std::stop_token stop{};
    OddPaths oddPaths{};  ///< those of the catalogue of the phone
  };

  explicit CameraMediaSource(Setup setup) : setup_(std::move(setup)) {}

  void download(const MediaAsset& asset, DownloadDestination& destination) override;

 private:
  struct Progress {
    std::string path;
    std::string name;
    std::optional<FileStatus> status;  ///< as the phone first reported it, once it was opened
    std::uint64_t delivered = 0;       ///< bytes
  };
  /// Returns the status of the file. Throws SourceError if it is not a file or has changed.
  FileStatus expectedStatus(const Progress& progress);
  void goOn(Progress& progress, DownloadDestination& destination);
  void deliver(RangedReader& file, Progress& progress, DownloadDestination& destination);

  Setup setup_;
  std::unique_ptr<PhoneFiles> files_;
  std::vector<char> buffer_;
};

}  // namespace tavrix
