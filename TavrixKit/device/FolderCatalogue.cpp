#include "device/FolderCatalogue.h"

#include <cerrno>

#include "device/MetadataReader.h"

namespace tavrix {
namespace {

bool isGone(const FileError& error) { return error.code() == ENOENT || error.code() == ENOTDIR; }

/// Sorts the failures of a pass: what is gone is no file of the catalogue any more.
void settleFailures(FolderCatalogue& catalogue, const std::vector<std::string>& paths,
                    const std::vector<MetadataPass::Failure>& failures) {
  std::vector<bool> gone(catalogue.items.size(), false);
  for (const MetadataPass::Failure& failure : failures) {
    const std::string& path = paths[failure.index];
    if (isGone(failure.error)) {
      catalogue.leftOut.push_back({path, SourceFolder::Reason::vanished});
      gone[failure.index] = true;
    } else {
      catalogue.unreadable.push_back(path);
    }
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < gone.size(); ++i) {
    if (gone[i]) continue;
    if (kept != i) catalogue.items[kept] = std::move(catalogue.items[i]);
    ++kept;
  }
  catalogue.items.resize(kept);
}

}  // namespace

FolderCatalogue FolderCatalogue::read(const std::string& folder, MetadataPass::Setup setup,
                                      const std::stop_token& stop) {
  SourceFolder::Listing listing = SourceFolder::list(folder);
  FolderCatalogue catalogue;
  catalogue.leftOut = std::move(listing.leftOut);
  std::vector<std::string> paths;
  for (SourceFolder::File& file : listing.files) {
    catalogue.items.push_back(std::move(file.item));
    paths.push_back(std::move(file.path));
  }
  MetadataPass pass{std::move(setup)};
  const auto result = pass.run(
      catalogue.items,
      [&](std::size_t index) {
        return MetadataReader::read(*openForRangedReading(folder + "/" + paths[index]));
      },
      stop);
  catalogue.progress = result.progress;
  catalogue.isComplete = result.isComplete;
  catalogue.isKept = result.isKept;
  settleFailures(catalogue, paths, result.failures);
  return catalogue;
}

}  // namespace tavrix
