// TextPrinter: places.

#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/PlaceSentences.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

/// Returns a position to about a metre.
std::string exactPointText(const GeoPoint& point) {
  return fmt::format("{:.5f}, {:.5f}", point.latitude, point.longitude);
}

std::string textOr(const std::optional<std::string>& text, std::string_view other) {
  return text ? printable(*text) : std::string{other};
}

/// Returns the city, or otherwise the region, and the country of a place.
std::pair<std::string, std::string> namesOf(const LibraryPlace& place, Language language) {
  const auto found = place.names.find(language == Language::russian ? "ru" : "en");
  if (found == place.names.end()) return {say(language, sentences::cityNotYet), "—"};
  return {textOr(found->second.cityOrRegion(), "—"), textOr(found->second.countryName, "—")};
}

}  // namespace

void TextPrinter::places(const PlacesResult& result) {
  const std::vector<LibraryPlace>& places = result.places;
  if (places.empty()) return line(say(language_, sentences::emptyPlaces));
  std::vector<Table::Column> columns{{say(language_, sentences::titlePlace)}};
  if (result.tree) {
    columns.push_back({say(language_, sentences::titleCity), false, true});
    columns.push_back({say(language_, sentences::titleCountry), false, true});
  }
  columns.push_back({say(language_, sentences::titleShots), true});
  table(std::move(columns)).write(sink_, places.size(), [&](std::size_t row) -> Table::Cells {
    Table::Cells cells{exactPointText(places[row].center)};
    if (result.tree) {
      const auto [city, country] = namesOf(places[row], language_);
      cells.insert(cells.end(), {city, country});
    }
    cells.push_back(number(places[row].bundles.size()));
    return cells;
  });
  std::uint64_t shots = 0;
  for (const LibraryPlace& place : places) shots += place.bundles.size();
  line("");
  if (result.tree) placeTree(*result.tree);
  line(say(language_, sentences::totalPlaces, count(places.size(), sentences::places),
           count(shots, sentences::shots)));
}

void TextPrinter::placeTree(const PlaceTree& tree) {
  std::vector<Table::Cells> rows;
  const auto add = [&](const std::string& name, std::uint64_t files) {
    if (files > 0) rows.push_back({name, number(files)});
  };
  for (const PlaceTree::Country& country : tree.countries) {
    add(country.name.empty() ? say(language_, sentences::withoutCountry) : printable(country.name),
        country.count);
    std::uint64_t rest = country.count;
    for (const PlaceTree::City& city : country.cities) {
      add("  " + printable(city.name), city.count);
      rest -= city.count;
    }
    if (!country.cities.empty()) add("  " + say(language_, sentences::withoutCity), rest);
  }
  add(say(language_, sentences::cityNotYet), tree.unresolvedCount);
  add(say(language_, sentences::withoutPlace), tree.unplacedCount);
  table({{say(language_, sentences::titleCountryAndCity), false, true},
         {say(language_, sentences::titleFiles), true}})
      .write(sink_, rows.size(), [&](std::size_t row) { return rows[row]; });
  line("");
}

void TextPrinter::placeNamesReset(bool hadAny) {
  line(say(language_, hadAny ? sentences::placeNamesReset : sentences::placeNamesNone));
}

}  // namespace tavrix::cli
