#include "cli/printing/TextPrinter.h"

#include <chrono>

#include "cli/sentences/CliSentences.h"
#include "cli/sentences/ThumbnailSentences.h"
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

std::string TextPrinter::dateText(const std::optional<Instant>& date) const {
  return date ? timeText(zone_.toLocal(*date)) : absent;
}

std::string TextPrinter::timeText(LocalTime local) {
  const auto day = std::chrono::floor<std::chrono::days>(local);
  const std::chrono::hh_mm_ss time{std::chrono::floor<std::chrono::seconds>(local - day)};
  return fmt::format("{} {:02}:{:02}:{:02}", dayText(CivilDate{day}), time.hours().count(),
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

void TextPrinter::thumbnailsWritten(std::uint64_t written, std::uint64_t failed) {
  line(failed == 0
           ? say(language_, sentences::thumbnailsWritten, number(written))
           : say(language_, sentences::thumbnailsWrittenWithout, number(written), number(failed)));
}

void TextPrinter::snapshotWritten(const std::string& path, std::uint64_t items) {
  line(say(language_, sentences::snapshotWritten, count(items, sentences::entries),
           printable(path)));
}

void TextPrinter::name(const std::string& name) { line(name); }

}  // namespace tavrix::cli
