// The command that writes small pictures of everything on the phone.

#include <charconv>
#include <set>

#include "cli/commands/Commands.h"
#include "cli/printing/ContactSheet.h"
#include "cli/printing/GroupText.h"
#include "cli/printing/ProgressLine.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/ThumbnailSentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/OpenPlaceNaming.h"
#include "cli/sessions/Source.h"
#include "cli/sessions/ThumbnailBatch.h"
#include "foundation/files/AtomicFile.h"
#include "grouping/GroupFaces.h"
#include "services/Thumbnails.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

constexpr std::uint32_t leastSide = 32;
constexpr std::uint32_t greatestSide = 2560;
constexpr std::size_t picturesOfSection = 20;
constexpr std::uint64_t longestList = 20;
constexpr std::string_view pictureFolder = "pictures";

std::uint32_t wantedSide(const CommandContext& context) {
  const auto& text = context.call.thumbnails.size;
  if (!text) return thumbnailSide;
  std::uint32_t side = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), side);
  const bool isNumber = error == std::errc{} && end == text->data() + text->size();
  if (isNumber && side >= leastSide && side <= greatestSide) return side;
  throw CommandFailure{ExitStatus::usage, say(context.language(), sentences::thumbnailSizeBad,
                                              forSentence(*text), leastSide, greatestSide)};
}

/// Opens a folder to write to, which may have to be created. Throws CommandFailure if it already
/// holds anything, or is inside the source.
std::unique_ptr<Folder> openEmpty(const CommandContext& context, const std::string& path) {
  checkSnapshotFolder(context, path);
  auto folder = Destination::openOrCreate(path);
  if (folder->names().empty()) return folder;
  throw CommandFailure{ExitStatus::usage,
                       say(context.language(), sentences::folderNotEmpty, forSentence(path))};
}

/// Returns "00042_100APPLE_IMG_0001.HEIC.jpg": the place in the catalogue and the id of the asset.
std::string fileNameOf(std::size_t index, std::size_t count, std::string_view id) {
  constexpr std::size_t longestID = 200;  // bytes, so that the name suits every file system
  std::string name = printable(id.substr(0, longestID));
  for (char& c : name) {
    if (c == '/' || c == '\0') c = '_';
  }
  return fmt::format("{:0{}}_{}.jpg", index + 1, std::to_string(count).size(), name);
}

std::vector<MediaAsset> picturesOf(const std::vector<MediaAsset>& assets) {
  std::vector<MediaAsset> pictures;
  for (const MediaAsset& asset : assets) {
    const bool isPicture = asset.kind() == MediaKind::photo || asset.kind() == MediaKind::video;
    if (isPicture) pictures.push_back(asset);
  }
  return pictures;
}

/// Returns the pictures of a folder on the page, in capture order: those that stand for it, and as
/// many of the others as there is room for.
std::vector<MediaAsset> facesOf(const std::vector<AssetBundle>& shots) {
  std::set<std::size_t> chosen;
  for (const auto& face : GroupFaces::of(shots, picturesOfSection).faces) chosen.insert(face.shot);
  for (std::size_t i = 0; i < shots.size() && chosen.size() < picturesOfSection; ++i) {
    chosen.insert(i);
  }
  std::vector<MediaAsset> pictures;
  for (const std::size_t shot : chosen) pictures.push_back(shownFile(shots[shot]));
  return pictures;
}

/// The page with all folders, and the files that it shows.
class SheetWriter {
 public:
  SheetWriter(const CommandContext& context, std::unique_ptr<Folder> folder, const Library& library)
      : context_(context), folder_(std::move(folder)), library_(library) {
    for (const auto& row : library_.rows) {
      for (const MediaAsset& picture : facesOf(row.group->bundles)) {
        wanted_.emplace(picture.id());
      }
    }
    folder_->makeFolders(std::string{pictureFolder});
  }

  void take(const MediaAsset& asset, const std::string& fileName, const SmallImage& image) {
    if (!wanted_.contains(std::string{asset.id()})) return;
    const std::string path = pathOf(fileName);
    writeFileAtomically(*folder_, path, image.jpeg);
    written_.emplace(asset.id(), path);
  }

  void finish() {
    ContactSheet sheet;
    sheet.title = say(context_.language(), sentences::sheetTitle, deviceName(context_));
    for (const auto& row : library_.rows) sheet.sections.push_back(sectionOf(row));
    writeFileAtomically(*folder_, "index.html", htmlOf(sheet, context_.language()));
  }

 private:
  static std::string pathOf(const std::string& fileName) {
    return std::string{pictureFolder} + "/" + fileName;
  }

  ContactSheet::Section sectionOf(const FolderNaming::Row& row) const {
    const Language language = context_.language();
    const auto& bundles = row.group->bundles;
    ContactSheet::Section section;
    section.name = row.name;
    section.days = daysText(*row.group, context_.settings.gathering.timeZone);
    section.counts = counted(language, bundles.size(), sentences::shots);
    for (const MediaAsset& picture : facesOf(bundles)) {
      const auto file = written_.find(std::string{picture.id()});
      if (file == written_.end()) continue;
      section.pictures.push_back({file->second, std::string{picture.name()}});
    }
    section.shotsNotShown = bundles.size() - section.pictures.size();
    return section;
  }

  const CommandContext& context_;
  std::unique_ptr<Folder> folder_;
  const Library& library_;
  std::set<std::string> wanted_;
  std::map<std::string, std::string> written_;  ///< paths by id
};

/// Names the first pictures without a thumbnail on standard error, and counts all of them.
class MissingPictures {
 public:
  explicit MissingPictures(const CommandContext& context) : context_(context) {}

  void add(const MediaAsset& asset) {
    if (++count_ > longestList) return;
    context_.note(say(context_.language(), sentences::noThumbnail, forSentence(asset.id())));
  }
  void finish() const {
    if (count_ <= longestList) return;
    context_.note(say(context_.language(), sentences::moreWithoutThumbnail,
                      numberText(context_.language(), count_ - longestList)));
  }
  std::uint64_t count() const { return count_; }

 private:
  const CommandContext& context_;
  std::uint64_t count_ = 0;
};

/// Shows how many pictures of all are done.
class CountingBar {
 public:
  CountingBar(const CommandContext& context, std::uint64_t total)
      : line_(context.messages), isShown_(context.messages.showsProgress()), total_(total) {}

  void show(std::uint64_t done) {
    const auto now = std::chrono::steady_clock::now();
    if (!isShown_ || !(line_.isDue(now) || line_.isDueAtEnd(done == total_))) return;
    const Language language = line_.form().language;
    line_.write(
        [&] {
          const std::string counts =
              say(language, sentences::readingCounts, numberText(language, done),
                  counted(language, total_, sentences::filesOfTotal));
          return progressLine(line_.columns(), shareOf(done, total_), counts, {});
        },
        "thumbnails",
        [&](JsonWriter& json) { json.field("filesDone", done).field("filesTotal", total_); });
  }
  void clear() { line_.clear(); }

 private:
  ProgressLine line_;
  bool isShown_;
  std::uint64_t total_;
};

std::unique_ptr<ThumbnailStore> openStore(const CommandContext& context, MainLoop& loop) {
  const Surroundings& around = context.surroundings;
  if (!around.conversionProgram) {
    throw CommandFailure{ExitStatus::stopped, say(context.language(), sentences::decoderMissing)};
  }
  auto store =
      openThumbnails({.loop = loop,
                      .conversionProgram = *around.conversionProgram,
                      .now = around.now,
                      .folder = thumbnailFolderOf(around.environment, context.call.stateFolder)},
                     around.environment);
  const auto access = sourceOf(context).files()->pictures();
  if (access) store->setSource(access->key, access->files);
  return store;
}

Library readFolders(const CommandContext& context) {
  const auto naming = openPlaceNaming(context);
  Library library = readLibrary(context, naming.get());
  if (naming) naming->save();
  return library;
}

}  // namespace

ExitStatus writeThumbnails(const CommandContext& context) {
  const std::uint32_t side = wantedSide(context);
  const auto& sheetPath = context.call.thumbnails.sheet;
  const std::stop_token stop = context.surroundings.catchInterrupts();
  const Library library = readFolders(context);
  const auto folder = openEmpty(context, context.call.operands.at(1));
  std::optional<SheetWriter> sheet;
  if (sheetPath) sheet.emplace(context, openEmpty(context, *sheetPath), library);

  std::vector<MediaAsset> all;
  for (const AssetBundle& bundle : *library.bundles) {
    all.insert(all.end(), bundle.assets().begin(), bundle.assets().end());
  }
  const auto pictures = picturesOf(all);
  MissingPictures missing{context};
  std::uint64_t written = 0;
  {
    StandardMainLoop loop;
    const auto store = openStore(context, loop);
    CountingBar bar{context, pictures.size()};
    const auto take = [&](std::size_t index, const SmallImage* image) {
      const MediaAsset& asset = pictures[index];
      if (image == nullptr) {
        bar.clear();
        missing.add(asset);
      } else {
        const std::string name = fileNameOf(index, pictures.size(), asset.id());
        writeFileAtomically(*folder, name, image->jpeg);
        if (sheet) sheet->take(asset, name, *image);
        ++written;
      }
      bar.show(written + missing.count());
    };
    makeThumbnails(loop, *store, pictures, side, take, stop);
  }
  missing.finish();
  if (sheet) sheet->finish();
  context.printer.thumbnailsWritten(written, missing.count());
  if (stop.stop_requested()) return ExitStatus::cancelled;
  return missing.count() > 0 ? ExitStatus::someFailed : ExitStatus::done;
}

}  // namespace tavrix::cli
