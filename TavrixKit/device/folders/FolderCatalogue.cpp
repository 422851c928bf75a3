#include "device/folders/FolderCatalogue.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <string_view>

#include "device/metadata/MetadataReader.h"

namespace tavrix {
namespace {

bool isGone(const FileError& error) { return error.code() == ENOENT || error.code() == ENOTDIR; }

/// Applies the failures of a pass: files that are gone leave the catalogue, the others are
/// unreadable. `paths` are the paths of the items and stay parallel to them.
void settleFailures(FolderCatalogue& catalogue, std::vector<std::string>& paths,
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
    if (kept != i) {
      catalogue.items[kept] = std::move(catalogue.items[i]);
      paths[kept] = std::move(paths[i]);
    }
    ++kept;
  }
  catalogue.items.resize(kept);
  paths.resize(kept);
}

/// Returns true if no part of the source is unseen.
bool isWhole(const std::vector<SourceFolder::LeftOut>& leftOut) {
  return std::none_of(leftOut.begin(), leftOut.end(),
                      [](const SourceFolder::LeftOut& each) { return each.isUnseen(); });
}

FolderCatalogue complete(SourceFolder::Listing listing, MetadataPass& pass,
                         const FolderCatalogue::ReadMetadata& read, const std::stop_token& stop) {
  FolderCatalogue catalogue;
  if (!listing.isComplete) {
    catalogue.isComplete = false;
    return catalogue;
  }
  catalogue.leftOut = std::move(listing.leftOut);
  catalogue.items = std::move(listing.items);
  std::vector<std::string> paths = std::move(listing.paths);
  const auto result = pass.run(
      catalogue.items,
      [&](std::size_t index) { return read(paths[index], catalogue.items[index].size); }, stop,
      isWhole(catalogue.leftOut));
  catalogue.progress = result.progress;
  catalogue.isComplete = result.isComplete;
  catalogue.isKept = result.isKept;
  settleFailures(catalogue, paths, result.failures);
  catalogue.oddPaths = OddPaths{catalogue.items, paths};
  return catalogue;
}

}  // namespace

std::uint64_t FolderCatalogue::unreadFolders() const {
  std::set<std::string_view> folders;
  for (const SourceFolder::LeftOut& each : leftOut) {
    if (!each.isUnseen()) continue;
    const std::string_view path = each.path;
    using enum SourceFolder::Reason;
    const bool isFile =
        each.reason == unreadableFile || each.reason == tooLarge || each.reason == longName;
    const std::size_t end = isFile ? path.rfind('/') : path.size();
    folders.insert(end == std::string_view::npos ? "" : path.substr(0, end));
  }
  return folders.size();
}

FolderCatalogue FolderCatalogue::of(SourceFolder::Listing listing, MetadataPass::Setup setup,
                                    const ReadMetadata& read, const std::stop_token& stop) {
  MetadataPass pass{std::move(setup)};
  return complete(std::move(listing), pass, read, stop);
}

FolderCatalogue FolderCatalogue::read(const std::string& folder, MetadataPass::Setup setup,
                                      const std::stop_token& stop) {
  MetadataPass pass{std::move(setup)};
  pass.beginLoading();
  return complete(
      SourceFolder::list(folder, stop), pass,
      [&](const std::string& path, std::uint64_t /*size*/) {
        return MetadataReader::read(*openForRangedReading(folder + "/" + path));
      },
      stop);
}

}  // namespace tavrix
