#include "settings/FolderMaking.h"

#include <fmt/format.h>

#include "foundation/json/JsonWriter.h"
#include "naming/NameRendering.h"
#include "naming/NameTemplateCoding.h"
#include "settings/GivenTemplate.h"
#include "settings/SettingKeys.h"

namespace tavrix {
namespace {

using DestinationMarker::FolderMaking;

std::string textOf(bool flag) { return flag ? "true" : "false"; }
std::string textOf(double number) { return fmt::format("{}", number); }
std::string textOf(int number) { return fmt::format("{}", number); }
using tavrix::textOf;

/// Returns the persisted form on one line.
std::string templateText(const NameTemplate& nameTemplate) {
  StringSink sink;
  JsonWriter json{sink, JsonLayout::line};
  NameTemplateCoding::encode(nameTemplate, json);
  json.finish();
  std::string text = sink.text();
  text.pop_back();
  return text;
}

/// Returns the value as the user would type it in a call.
std::string typedValue(const std::string& key, const std::string& value) {
  if (key != "nameTemplate") return value;
  const auto given = givenTemplate(value, {});
  const auto* const nameTemplate = std::get_if<NameTemplate>(&given);
  if (nameTemplate == nullptr) return value;
  return TypedTemplate::print(*nameTemplate).value_or(value);
}

void addEvents(FolderMaking& making, const Settings::Gathering& gathering) {
  making["eventGapHours"] = textOf(gathering.eventGapHours);
  making["splitByDistance"] = textOf(gathering.splitByDistance);
  if (gathering.splitByDistance) making["eventGapKm"] = textOf(gathering.eventGapKm);
}

void addTrips(FolderMaking& making, const Settings::Gathering& gathering) {
  making["tripDistanceKm"] = textOf(gathering.tripDistanceKm);
  making["tripMinDays"] = textOf(gathering.tripMinDays);
  making["tripCityKm"] = textOf(gathering.tripCityKm);
  making["tripMaxGapHours"] = textOf(gathering.tripMaxGapHours);
  if (gathering.homeOverride) {
    making["homeOverride"] =
        fmt::format("{},{}", gathering.homeOverride->latitude, gathering.homeOverride->longitude);
    return;
  }
  making["homeWindowMonths"] = textOf(gathering.homeWindowMonths);
  making["homeRadiusKm"] = textOf(gathering.homeRadiusKm);
  if (gathering.homePeriods) making["homePeriods"] = textOf(true);
}

void addGathering(FolderMaking& making, const Settings::Gathering& gathering) {
  making["uiMode"] = textOf(gathering.uiMode);
  making["timeZoneID"] = gathering.timeZone.id();
  // Notes of versions that did not know a setting of this form stay valid while it is off.
  if (gathering.cameraDays) making["cameraDays"] = textOf(true);
  if (gathering.uiMode == UIGroupingMode::byDate) {
    making["granularity"] = textOf(gathering.granularity);
  }
  if (gathering.uiMode == UIGroupingMode::events) addEvents(making, gathering);
  if (gathering.uiMode == UIGroupingMode::trips) addTrips(making, gathering);
}

void addNaming(FolderMaking& making, const Settings::Naming& naming,
               const std::string& systemLocaleID) {
  making["nameByGroupID"] = textOf(naming.nameByGroupID);
  if (naming.nameByGroupID) return;
  making["nameTemplate"] = templateText(naming.nameTemplate);
  making["locale"] = NameRendering::localeID(naming.nameTemplate.language, systemLocaleID);
  const Language language = languageOfLocale(systemLocaleID);
  if (naming.datelessName != FolderNaming::initialDatelessName(language)) {
    making["datelessName"] = naming.datelessName;
  }
  making["geocodingEnabled"] = textOf(naming.geocodingEnabled);
  if (naming.geocodingEnabled) making["mergeDistricts"] = textOf(naming.mergeDistricts);
  if (naming.geocodingEnabled && naming.severalCities) making["severalCities"] = textOf(true);
  if (naming.wholeFolderDates) making["wholeFolderDates"] = textOf(true);
  making["mergeSameNames"] = textOf(naming.mergeSameNames);
}

void addLayout(FolderMaking& making, const Settings::Layout& layout) {
  making["photoJPEG"] = textOf(layout.photoJPEG);
  making["videoH264"] = textOf(layout.videoH264);
  making["separatePhotoVideo"] = textOf(layout.separatePhotoVideo);
  if (layout.separatePhotoVideo) making["flattenSingleKind"] = textOf(layout.flattenSingleKind);
  making["fileNamePrefixMode"] = textOf(layout.fileNamePrefixMode);
  if (layout.fileNamePrefixMode == FileNamePrefixMode::custom) {
    making["customFileNamePrefix"] = layout.customFileNamePrefix;
  }
}

/// Returns the place of a key in the order in which settings are set back: another mode has other
/// settings, and the locale follows from a template with a language of its own.
int rankOf(const std::string& key) {
  if (key == "uiMode" || key == "fileNamePrefixMode") return 0;
  return key == "locale" ? 2 : 1;
}

}  // namespace

FolderMaking folderMaking(const Settings& settings, const std::string& systemLocaleID) {
  FolderMaking making;
  addGathering(making, settings.gathering);
  addNaming(making, settings.naming, systemLocaleID);
  addLayout(making, settings.layout);
  return making;
}

WayBack wayBack(Settings settings, const std::string& systemLocaleID, const FolderMaking& before) {
  WayBack way;
  FolderMaking now = folderMaking(settings, systemLocaleID);
  for (const int rank : {0, 1, 2}) {
    for (const auto& [key, value] : before) {
      const auto found = now.find(key);
      const bool differs = found == now.end() || found->second != value;
      if (!differs || rankOf(key) != rank) continue;
      way.keys.push_back(key);
      if (key == "locale") {
        way.locale = value;
        continue;
      }
      const std::string assignment = fmt::format("{}={}", key, typedValue(key, value));
      auto changed = withSetting(settings, assignment);
      if (!std::holds_alternative<Settings>(changed)) continue;
      settings = std::get<Settings>(std::move(changed));
      now = folderMaking(settings, systemLocaleID);
      way.assignments.push_back(assignment);
    }
  }
  // Settings without a note had their initial values, which are known only for switches.
  for (const auto& [key, value] : FolderMaking{now}) {
    if (before.contains(key) || !now.contains(key)) continue;
    way.keys.push_back(key);
    if (value != textOf(true)) continue;
    const std::string assignment = fmt::format("{}={}", key, textOf(false));
    settings = std::get<Settings>(withSetting(settings, assignment));
    now = folderMaking(settings, systemLocaleID);
    way.assignments.push_back(assignment);
  }
  way.isComplete = folderMaking(settings, way.locale.value_or(systemLocaleID)) == before;
  way.settings = std::move(settings);
  return way;
}

}  // namespace tavrix
