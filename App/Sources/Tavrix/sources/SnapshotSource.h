#pragma once

#include "sources/PictureSource.h"

namespace tavrix {

/// A folder that holds "snapshot.json", the recorded catalogue of a phone, and "media", its files.
class SnapshotSource : public PictureSource {
 public:
  explicit SnapshotSource(std::string folder) : folder_(std::move(folder)) {}

  /// Returns true if `folder` has a snapshot, even one that cannot be read.
  static bool isSnapshot(const std::string& folder);

  Kind kind() const override { return Kind::snapshot; }
  FolderCatalogue readCatalogue(const ReadingSetup& reading) override;
  /// Reads the catalogue as assets without keeping its entries in memory. Throws as
  /// readCatalogue().
  std::vector<MediaAsset> readAssets(const ReadingSetup& reading) const;
  PhoneIdentity identity(const std::optional<std::string>& givenName) const override;
  std::shared_ptr<const SourceFiles> files() const override;

  std::string snapshotPath() const;
  std::string mediaFolder() const;

 private:
  std::string folder_;
};

/// The folder of media files that belongs to a snapshot does not exist.
class MediaMissing : public std::exception {
 public:
  explicit MediaMissing(std::string path) : path_(std::move(path)) {}
  const std::string& path() const { return path_; }
  const char* what() const noexcept override { return "MediaMissing"; }

 private:
  std::string path_;
};

/// Returns "FOLDER/NAME", without doubling a trailing "/".
std::string pathIn(const std::string& folder, std::string_view name);

}  // namespace tavrix
