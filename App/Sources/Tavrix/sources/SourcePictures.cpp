#include "sources/SourcePictures.h"

#include <cerrno>
#include <filesystem>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

#include "device/folders/SourceFolder.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

std::string pathBelow(const std::string& folder, const std::string& path) {
  const std::filesystem::path relative{path};
  bool leadsOut = path.empty() || relative.is_absolute();
  for (const auto& part : relative) leadsOut = leadsOut || part == "..";
  if (leadsOut) throw FileError{FileOperation::open, path, EXDEV};
  return (std::filesystem::path{folder} / relative).string();
}

/// The connections to one phone, one for each thread that reads.
class Connections {
 public:
  Connections(PhoneBrowser& browser, std::string deviceID)
      : browser_(browser), deviceID_(std::move(deviceID)) {}

  /// Returns the connection of this thread. Throws PhoneError.
  std::shared_ptr<PhoneFiles> ofThisThread() {
    {
      const std::lock_guard lock{mutex_};
      const auto known = files_.find(std::this_thread::get_id());
      if (known != files_.end()) return known->second;
    }
    std::shared_ptr<PhoneFiles> opened = browser_.openFiles(deviceID_, {});
    const std::lock_guard lock{mutex_};
    return files_[std::this_thread::get_id()] = std::move(opened);
  }

  /// Calls `work` and gives up the connection of this thread if it was lost.
  template <typename Work>
  auto watch(const Work& work) {
    try {
      return work();
    } catch (const PhoneError&) {
      const std::lock_guard lock{mutex_};
      files_.erase(std::this_thread::get_id());
      throw;
    }
  }

 private:
  PhoneBrowser& browser_;
  std::string deviceID_;
  std::mutex mutex_;  ///< of files_
  std::map<std::thread::id, std::shared_ptr<PhoneFiles>> files_;
};

class PictureOfPhone : public RangedReader {
 public:
  PictureOfPhone(std::shared_ptr<Connections> connections, const std::string& path,
                 std::uint64_t size)
      : connections_(std::move(connections)),
        files_(connections_->ofThisThread()),
        file_(connections_->watch([&] { return files_->open(path, size, true); })) {}

  std::uint64_t size() const override { return file_->size(); }
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    return connections_->watch([&] { return file_->read(offset, buffer); });
  }

 private:
  std::shared_ptr<Connections> connections_;
  std::shared_ptr<PhoneFiles> files_;
  std::unique_ptr<RangedReader> file_;
};

}  // namespace

PictureAccess picturesBelow(const std::string& folder,
                            std::function<std::string(const MediaAsset&)> pathOf) {
  const auto fullPath = [folder, pathOf = std::move(pathOf)](const MediaAsset& asset) {
    return pathBelow(folder, pathOf(asset));
  };
  PictureAccess access;
  access.key = SourceFolder::phoneKey(folder);
  access.files.open = [fullPath](const MediaAsset& asset) {
    return openForRangedReading(fullPath(asset));
  };
  access.files.localPath = [fullPath](const MediaAsset& asset) -> std::optional<std::string> {
    std::error_code error;
    const auto path = std::filesystem::absolute(fullPath(asset), error);
    if (error) return std::nullopt;
    return path.lexically_normal().string();
  };
  return access;
}

ThumbnailFiles picturesOfPhone(PhoneBrowser& browser, const std::string& deviceID,
                               const OddPaths& oddPaths) {
  const auto connections = std::make_shared<Connections>(browser, deviceID);
  ThumbnailFiles files;
  files.open = [connections, oddPaths](const MediaAsset& asset) -> std::unique_ptr<RangedReader> {
    const std::string path = Phones::mediaFolder + "/" + oddPaths.pathOf(asset.id());
    return std::make_unique<PictureOfPhone>(connections, path, asset.sizeBytes());
  };
  return files;
}

}  // namespace tavrix
