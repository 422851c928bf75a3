#include "naming/FolderNaming.h"

#include <gmock/gmock.h>

#include "media/BundleBuilder.h"
#include "naming/NamePresets.h"

namespace tavrix {
namespace {

using testing::ElementsAre;

/// A lookup with cells of one degree that knows the names of one cell, in two languages.
class FakePlaces : public PlaceLookup {
 public:
  std::string placeKey(const GeoPoint& point) const override {
    return std::to_string(static_cast<int>(point.latitude)) + ":" +
           std::to_string(static_cast<int>(point.longitude));
  }
  std::optional<PlaceNames> names(const std::string& key,
                                  const std::string& localeID) const override {
    if (key == "41:12") return localeID == "ru_RU" ? russian : english;
    return std::nullopt;
  }

 private:
  PlaceNames russian{"Рим", "Италия", "IT"};
  PlaceNames english{"Rome", "Italy", "IT"};
};

constexpr GeoPoint rome{41.9, 12.5};
constexpr GeoPoint oslo{59.9, 10.7};

MediaGroup group(std::string id, const char* start, std::optional<GeoPoint> place = std::nullopt) {
  MediaGroup result;
  result.id = std::move(id);
  if (start != nullptr) result.dateStart = result.dateEnd = parseIso8601(start);
  result.place = place;
  if (place) {
    result.bundles = BundleBuilder::makeBundles(
        {MediaAsset{"1.JPG", "1.JPG", {}, MediaKind::photo, 1, {}, place, false, {}, {}}});
  }
  return result;
}

FolderNaming::Settings settings() {
  FolderNaming::Settings result;
  result.nameTemplate = NamePresets::defaultTemplate();
  result.places = std::make_shared<FakePlaces>();
  result.systemLocaleID = "ru_RU";
  return result;
}

std::vector<std::string> namesOf(const FolderNaming::Result& result) {
  std::vector<std::string> names;
  for (const auto& row : result.rows) names.push_back(row.name);
  return names;
}

const char* const noon = "2026-05-16T12:00:00Z";

TEST(FolderNaming, nameGroup_takesTheFirstRuleThatApplies) {
  const MediaGroup dated = group("month-2026-05/a", noon);
  const MediaGroup undated = group("no-date", nullptr);
  auto literalOnly = settings();
  literalOnly.nameTemplate.tokens = {name_token::Literal{"x"}};
  auto manual = settings();
  manual.nameByGroupID = true;
  manual.overrides = {{"month-2026-05/a", " Отпуск: "}, {"no-date", ""}};
  auto blank = settings();
  blank.overrides = {{"month-2026-05/a", "   "}};
  auto byID = settings();
  byID.nameByGroupID = true;
  auto english = settings();
  english.datelessName = FolderNaming::initialDatelessName(Language::english) + "/";
  auto east = literalOnly;
  east.timeZone = TimeZone::load("Pacific/Kiritimati").value();

  EXPECT_EQ(FolderNaming::nameGroup(manual, dated), "Отпуск-");
  EXPECT_EQ(FolderNaming::nameGroup(manual, undated), "no-date");
  EXPECT_EQ(FolderNaming::nameGroup(blank, dated), "untitled");
  EXPECT_EQ(FolderNaming::nameGroup(byID, dated), "month-2026-05-a");
  EXPECT_EQ(FolderNaming::nameGroup(settings(), dated), "2026-05-16");
  EXPECT_EQ(FolderNaming::nameGroup(literalOnly, dated), "2026-05-16");
  EXPECT_EQ(FolderNaming::nameGroup(east, dated), "2026-05-17");
  MediaGroup shown = dated;
  shown.cameraDays = DaySpan{std::chrono::sys_days{std::chrono::days{20588}},
                             std::chrono::sys_days{std::chrono::days{20590}}};
  auto period = east;
  period.nameTemplate.tokens = {name_token::Period{}};
  EXPECT_EQ(FolderNaming::nameGroup(period, shown), "2026-05-15–2026-05-17");
  EXPECT_EQ(FolderNaming::nameGroup(east, shown), "2026-05-15");
  EXPECT_EQ(FolderNaming::nameGroup(settings(), undated), "Без даты");
  EXPECT_EQ(FolderNaming::nameGroup(english, undated), "No date-");
}

TEST(FolderNaming, places_comeInTheLanguageOfTheTemplate) {
  const MediaGroup roman = group("a", noon, rome);
  auto english = settings();
  english.nameTemplate.language = NameLanguage::english;
  auto offline = settings();
  offline.geocodingEnabled = false;
  auto placeless = settings();
  placeless.places = nullptr;

  EXPECT_EQ(FolderNaming::nameGroup(settings(), roman), "2026-05-16 — Рим");
  EXPECT_EQ(FolderNaming::nameGroup(english, roman), "2026-05-16 — Rome");
  EXPECT_EQ(FolderNaming::nameGroup(offline, roman), "2026-05-16");
  EXPECT_EQ(FolderNaming::nameGroup(placeless, roman), "2026-05-16");
  EXPECT_EQ(FolderNaming::nameGroup(settings(), group("no-date", nullptr, rome)), "Рим");
}

TEST(FolderNaming, equalNames_areNumberedUnlessMerged) {
  auto monthly = settings();
  monthly.nameTemplate = NamePresets::builtins()[1].nameTemplate;
  monthly.overrides = {{"d", "2026-05 (2)"}, {"e", "ПРОЧЕЕ"}, {"f", "Прочее"}};
  const std::vector<Shared<MediaGroup>> groups{group("a", noon),    group("b", noon),
                                               group("c", noon),    group("d", noon),
                                               group("e", nullptr), group("f", nullptr)};
  const auto result = FolderNaming::resolve(monthly, groups);
  // The manual name "2026-05 (2)" is a base name of its own and occurs for the first time.
  EXPECT_THAT(namesOf(result), ElementsAre("2026-05", "2026-05 (2)", "2026-05 (3)", "2026-05 (2)",
                                           "ПРОЧЕЕ", "Прочее"));
  for (std::size_t i = 0; i < groups.size(); ++i) EXPECT_EQ(result.rows[i].group, groups[i]);

  monthly.mergeSameNames = true;
  EXPECT_THAT(namesOf(FolderNaming::resolve(monthly, groups)),
              ElementsAre("2026-05", "2026-05", "2026-05", "2026-05 (2)", "ПРОЧЕЕ", "Прочее"));
}

TEST(FolderNaming, unresolvedPlaces_areCollectedOnceACell) {
  const GeoPoint osloCentre{59.91, 10.75};
  const GeoPoint bergen{60.4, 5.3};
  auto named = settings();
  named.overrides = {{"c", "Берген"}};
  const std::vector<Shared<MediaGroup>> groups{group("a", noon, oslo), group("b", noon, rome),
                                               group("c", noon, bergen),
                                               group("d", noon, osloCentre), group("e", noon)};
  EXPECT_THAT(FolderNaming::resolve(named, groups).unresolvedPlaces, ElementsAre(oslo, bergen));
  named.geocodingEnabled = false;
  EXPECT_THAT(FolderNaming::resolve(named, groups).unresolvedPlaces, ElementsAre());
}

}  // namespace
}  // namespace tavrix
