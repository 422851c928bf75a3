#pragma once

#include "sources/PictureSource.h"

namespace tavrix {

/// A folder that stands in for a phone: a mounted phone, a memory card, or a copy of its folder.
class CardSource : public PictureSource {
 public:
  /// `source` is the folder that the user named, `cameraFolder` the folder in it that holds the
  /// catalogue, as SourceFolder::catalogueFolder() returned it.
  CardSource(std::string source, std::string cameraFolder)
      : source_(std::move(source)), cameraFolder_(std::move(cameraFolder)) {}

  const std::string& cameraFolder() const { return cameraFolder_; }

  Kind kind() const override { return Kind::card; }
  FolderCatalogue readCatalogue(const ReadingSetup& reading) override;
  PhoneIdentity identity(const std::optional<std::string>& givenName) const override;
  std::shared_ptr<const SourceFiles> files() const override;

 private:
  std::string source_;
  std::string cameraFolder_;
  OddPaths oddPaths_;  ///< of the catalogue that was read
};

}  // namespace tavrix
