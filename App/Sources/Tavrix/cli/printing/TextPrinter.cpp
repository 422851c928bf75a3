#include "cli/printing/TextPrinter.h"

#include <algorithm>
#include <chrono>

#include "cli/printing/GroupText.h"
#include "cli/sentences/CliSentences.h"
#include "foundation/Text.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix::cli {
namespace {

constexpr const char* absent = "—";

std::string pointText(const std::optional<GeoPoint>& point) {
  return point ? fmt::format("{:.5f}, {:.5f}", point->latitude, point->longitude) : absent;
}

std::uint64_t bytesOf(const std::vector<MediaAsset>& assets) {
  std::uint64_t bytes = 0;
  for (const MediaAsset& asset : assets) bytes += asset.sizeBytes();
  return bytes;
}

std::string companions(const AssetBundle& bundle) {
  std::string names;
  for (const MediaAsset& asset : bundle.assets()) {
    if (asset.id() == bundle.original().id()) continue;
    if (!names.empty()) names += ", ";
    names += asset.name();
  }
  return names;
}

}  // namespace

std::string TextPrinter::pathOnPhone(const MediaAsset& asset) {
  return asset.directory() ? fmt::format("{}/{}", *asset.directory(), asset.name())
                           : std::string{asset.name()};
}

std::string TextPrinter::kindText(const MediaAsset& asset) const {
  switch (asset.kind()) {
    case MediaKind::photo:
      return say(language_, sentences::kindPhoto);
    case MediaKind::video:
      return say(language_, sentences::kindVideo);
    case MediaKind::sidecar:
      return say(language_, sentences::kindSidecar);
    case MediaKind::other:
      return say(language_, sentences::kindOther);
  }
  return {};
}

std::string TextPrinter::kindText(const AssetBundle& bundle) const {
  return bundle.isLivePhoto() ? "Live Photo" : kindText(bundle.original());
}

std::string TextPrinter::notes(const MediaAsset& asset) const {
  std::string text;
  if (asset.isEditedVariant()) text = say(language_, sentences::noteEdited);
  if (asset.isOptimized()) {
    if (!text.empty()) text += ", ";
    text += say(language_, sentences::noteOptimized);
  }
  return text;
}

std::string TextPrinter::dayTextOf(const std::optional<Instant>& date) const {
  return date ? dayText(zone_.dateAt(*date)) : absent;
}

std::string TextPrinter::dateText(const std::optional<Instant>& date) const {
  if (!date) return absent;
  const LocalTime local = zone_.toLocal(*date);
  const auto sinceMidnight = local - std::chrono::floor<std::chrono::days>(local);
  const std::chrono::hh_mm_ss time{std::chrono::floor<std::chrono::seconds>(sinceMidnight)};
  return fmt::format("{} {:02}:{:02}:{:02}", dayText(zone_.dateAt(*date)), time.hours().count(),
                     time.minutes().count(), time.seconds().count());
}

void TextPrinter::catalog(const std::vector<MediaAsset>& assets) {
  if (assets.empty()) return line(say(language_, sentences::emptyCatalog));
  table({{say(language_, sentences::titleFile), false, true},
         {say(language_, sentences::titleKind)},
         {say(language_, sentences::titleSize), true},
         {say(language_, sentences::titleDate)},
         {say(language_, sentences::titlePlace)},
         {say(language_, sentences::titleNotes)}})
      .write(sink_, assets.size(), [&](std::size_t row) -> Table::Cells {
        const MediaAsset& asset = assets[row];
        return {pathOnPhone(asset),          kindText(asset),
                bytes(asset.sizeBytes()),    dateText(asset.captureDate()),
                pointText(asset.location()), notes(asset)};
      });
  line("");
  line(say(language_, sentences::totalCatalog, count(assets.size(), sentences::files),
           bytes(bytesOf(assets))));
}

void TextPrinter::bundles(const std::vector<AssetBundle>& bundles) {
  if (bundles.empty()) return line(say(language_, sentences::emptyCatalog));
  table({{say(language_, sentences::titleShot), false, true},
         {say(language_, sentences::titleKind)},
         {say(language_, sentences::titleDate)},
         {say(language_, sentences::titleFiles), true},
         {say(language_, sentences::titleSize), true},
         {say(language_, sentences::titleWith), false, true}})
      .write(sink_, bundles.size(), [&](std::size_t row) -> Table::Cells {
        const AssetBundle& bundle = bundles[row];
        return {pathOnPhone(bundle.original()),  kindText(bundle),
                dateText(bundle.captureDate()),  number(bundle.assets().size()),
                bytes(bytesOf(bundle.assets())), companions(bundle)};
      });
  std::uint64_t fileCount = 0;
  for (const AssetBundle& bundle : bundles) fileCount += bundle.assets().size();
  line("");
  line(say(language_, sentences::totalBundles, count(bundles.size(), sentences::shots),
           count(fileCount, sentences::files)));
}

void TextPrinter::groups(const Library& library) {
  if (library.fileCount == 0) return line(say(language_, sentences::emptyCatalog));
  if (library.rows.empty()) return line(say(language_, sentences::emptyGroups));
  MediaGroup::MediaCounts total;
  std::uint64_t fileCount = 0;
  std::vector<Table::Column> columns{{say(language_, sentences::titleFolder), false, true},
                                     {say(language_, sentences::titleShots), true},
                                     {say(language_, sentences::titlePhotos), true},
                                     {say(language_, sentences::titleVideos), true},
                                     {say(language_, sentences::titleOthers), true},
                                     {say(language_, sentences::titleSize), true},
                                     {say(language_, sentences::titleFrom)},
                                     {say(language_, sentences::titleTo)}};
  const bool hasMerged = std::any_of(library.rows.begin(), library.rows.end(),
                                     [](const auto& row) { return !row.group->children.empty(); });
  if (hasMerged) columns.push_back({say(language_, sentences::titleNotes)});
  table(std::move(columns)).write(sink_, library.rows.size(), [&](std::size_t row) -> Table::Cells {
    const MediaGroup& group = *library.rows[row].group;
    const MediaGroup::MediaCounts counts = group.counts();
    Table::Cells cells{library.rows[row].name,
                       number(group.bundles.size()),
                       number(counts.photos),
                       number(counts.videos),
                       number(counts.sidecars + counts.others),
                       bytes(counts.totalBytes),
                       dayTextOf(group.dateStart),
                       dayTextOf(group.dateEnd)};
    if (hasMerged) cells.push_back(mergedNote(language_, group));
    return cells;
  });
  for (const FolderNaming::Row& row : library.rows) {
    const MediaGroup::MediaCounts counts = row.group->counts();
    total.totalBytes += counts.totalBytes;
    fileCount += counts.photos + counts.videos + counts.sidecars + counts.others;
  }
  line("");
  line(say(language_, sentences::totalGroups, count(library.rows.size(), sentences::folders),
           count(fileCount, sentences::files), bytes(total.totalBytes)));
  if (library.optimizedCount > 0) {
    line(say(language_, sentences::optimizedNote, number(library.optimizedCount)));
  }
  home(library);
  reasons(library);
}

void TextPrinter::snapshotWritten(const std::string& path, std::uint64_t items) {
  line(say(language_, sentences::snapshotWritten, count(items, sentences::entries),
           printable(path)));
}

void TextPrinter::name(const std::string& name) { line(name); }

void TextPrinter::presets(const std::vector<NamePresets::Builtin>& presets) {
  for (const NamePresets::Builtin& preset : presets) {
    line(std::string{language_ == Language::russian ? preset.russian : preset.english});
    sink_.write(NameTemplateCoding::encodeText(preset.nameTemplate));
  }
}

}  // namespace tavrix::cli
