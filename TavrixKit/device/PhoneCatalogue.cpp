#include "device/PhoneCatalogue.h"

#include <cerrno>

#include "device/MetadataReader.h"

namespace tavrix {
namespace {

std::string pathOf(const std::string& folder) {
  return folder.empty() ? Phones::mediaFolder : Phones::mediaFolder + "/" + folder;
}

std::vector<FolderEntry> entriesOf(PhoneFiles& files, const std::string& folder) {
  std::vector<FolderEntry> entries;
  for (std::string& name : files.names(folder)) {
    try {
      const FileStatus status = files.status(folder + "/" + name);
      entries.push_back({std::move(name), status});
    } catch (const FileError& error) {
      // What is gone between the listing and here was not there.
      if (error.code() != ENOENT) throw;
    }
  }
  files.confirmPresence();
  return entries;
}

SourceFolder::Listing listingOf(PhoneFiles& files, const std::stop_token& stop) {
  try {
    return SourceFolder::list(
        [&](const std::string& folder) { return entriesOf(files, pathOf(folder)); }, stop);
  } catch (const FileError& error) {
    if (error.code() != ENOENT) throw;
    return {};
  }
}

}  // namespace

FolderCatalogue PhoneCatalogue::read(PhoneFiles& files, MetadataPass::Setup setup,
                                     const std::stop_token& stop) {
  std::stop_source pass;
  const std::stop_callback link{stop, [&] { pass.request_stop(); }};
  std::optional<PhoneError> lost;
  FolderCatalogue catalogue = FolderCatalogue::of(
      listingOf(files, stop), std::move(setup),
      [&](const std::string& path, std::uint64_t size) {
        try {
          const auto file = files.open(pathOf(path), size, true);
          const MediaMetadata metadata = MetadataReader::read(*file);
          // What a phone told that left in mid-answer must not get into the cache.
          file->close();
          return metadata;
        } catch (const PhoneError& error) {
          // The pass ends as a stopped one does: with all in the cache that was read.
          lost = error;
          pass.request_stop();
          throw FileError{FileOperation::read, path, EIO};
        }
      },
      pass.get_token());
  if (lost) throw *lost;
  return catalogue;
}

}  // namespace tavrix
