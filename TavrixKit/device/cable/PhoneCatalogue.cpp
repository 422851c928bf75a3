#include "device/cable/PhoneCatalogue.h"

#include <cerrno>

#include "device/metadata/MetadataReader.h"

namespace tavrix {
namespace {

std::string pathOf(const std::string& folder) {
  return folder.empty() ? Phones::mediaFolder : Phones::mediaFolder + "/" + folder;
}

/// Lists a phone's folder of pictures.
class PhoneLister {
 public:
  PhoneLister(PhoneFiles& files, const std::stop_token& stop,
              const std::function<void(std::uint64_t)>& found)
      : files_(files), stop_(stop), found_(found) {}

  /// Returns an empty listing for a phone without the folder.
  SourceFolder::Listing list() {
    try {
      return SourceFolder::list(
          [this](const std::string& folder) { return entriesOf(pathOf(folder)); }, stop_);
    } catch (const FileError& error) {
      if (error.code() != ENOENT) throw;
      return {};
    }
  }

 private:
  std::vector<FolderEntry> entriesOf(const std::string& folder) {
    std::vector<FolderEntry> entries;
    for (std::string& name : files_.names(folder)) {
      if (stop_.stop_requested()) throw PhoneError{PhoneError::Kind::stopped};
      // Left out by its name alone, which the phone need not be sent.
      if (name.size() > SourceFolder::maxNameBytes) {
        entries.push_back({std::move(name), {}});
        continue;
      }
      // Each entry costs a request, so the limit must end a folder that never does.
      if (++entries_ > SourceFolder::maxEntries)
        throw FileError{FileOperation::list, folder, EOVERFLOW};
      try {
        const FileStatus status = files_.status(folder + "/" + name);
        entries.push_back({std::move(name), status});
        count(status);
      } catch (const FileError& error) {
        // An entry that is gone since the listing is treated as absent.
        if (error.code() != ENOENT) throw;
      }
    }
    return entries;
  }

  void count(const FileStatus& status) {
    if (status.type != FileStatus::Type::file) return;
    ++count_;
    if (found_) found_(count_);
  }

  PhoneFiles& files_;
  const std::stop_token& stop_;
  const std::function<void(std::uint64_t)>& found_;
  std::uint64_t count_ = 0;  ///< files
  std::size_t entries_ = 0;  ///< files and everything else
};

}  // namespace

FolderCatalogue PhoneCatalogue::read(PhoneFiles& files, MetadataPass::Setup setup,
                                     const std::stop_token& stop,
                                     const std::function<void(std::uint64_t)>& found) {
  std::stop_source pass;
  const std::stop_callback link{stop, [&] { pass.request_stop(); }};
  std::optional<PhoneError> lost;
  FolderCatalogue catalogue = FolderCatalogue::of(
      PhoneLister{files, stop, found}.list(), std::move(setup),
      [&](const std::string& path, std::uint64_t size) {
        try {
          const auto file = files.open(pathOf(path), size, true);
          return MetadataReader::read(*file);
        } catch (const PhoneError& error) {
          // Ends the pass like a stopped one, with everything that was read in the cache.
          lost = error;
          pass.request_stop();
          throw FileError{FileOperation::read, path, EIO};
        }
      },
      pass.get_token());
  if (lost && lost->kind() != PhoneError::Kind::stopped) throw *lost;
  if (lost) catalogue.isComplete = false;
  return catalogue;
}

}  // namespace tavrix
