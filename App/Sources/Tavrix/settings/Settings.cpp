#include "settings/Settings.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

namespace tavrix {
namespace {

constexpr std::array<std::string_view, 4> modeTexts{"byDate", "events", "trips", "flat"};
constexpr std::array<std::string_view, 3> granularityTexts{"day", "month", "year"};

constexpr int daysOfMonth = 30;

template <typename Enumeration, std::size_t count>
std::optional<Enumeration> caseOf(const std::array<std::string_view, count>& texts,
                                  std::string_view text) {
  const auto found = std::find(texts.begin(), texts.end(), text);
  if (found == texts.end()) return std::nullopt;
  return static_cast<Enumeration>(found - texts.begin());
}

DateGranularity dateGranularity(UIGranularity granularity) {
  switch (granularity) {
    case UIGranularity::day:
      return DateGranularity::day;
    case UIGranularity::month:
      return DateGranularity::month;
    case UIGranularity::year:
      return DateGranularity::year;
  }
  return DateGranularity::day;
}

TransferOptions::Container container(const Settings& settings) {
  using enum TransferOptions::Container;
  if (!settings.layout.packAsZip) return folder;
  return settings.layout.packPerGroup ? zipPerGroup : zipWhole;
}

}  // namespace

std::string_view textOf(UIGroupingMode mode) {
  return modeTexts.at(static_cast<std::size_t>(mode));
}

std::string_view textOf(UIGranularity granularity) {
  return granularityTexts.at(static_cast<std::size_t>(granularity));
}

std::optional<UIGroupingMode> uiGroupingModeOf(std::string_view text) {
  return caseOf<UIGroupingMode>(modeTexts, text);
}

std::optional<UIGranularity> uiGranularityOf(std::string_view text) {
  return caseOf<UIGranularity>(granularityTexts, text);
}

Settings initialSettings(const TimeZone& zone, const std::string& systemLocaleID) {
  Settings settings;
  settings.gathering.timeZone = zone;
  settings.naming.datelessName =
      FolderNaming::initialDatelessName(languageOfLocale(systemLocaleID));
  return settings;
}

BundleFilter bundleFilter(const Settings& settings) {
  BundleFilter filter;
  filter.includePhotos = settings.content.includePhotos;
  filter.includeLive = settings.content.includeLive;
  filter.liveOnlyPhoto = settings.content.liveOnlyPhoto;
  filter.includeVideos = settings.content.includeVideos;
  filter.includeAAE = settings.content.includeAAE;
  filter.editedPolicy = settings.content.editedPolicy;
  filter.skipOptimized = settings.content.skipOptimized;
  filter.from = settings.content.periodFrom;
  filter.to = settings.content.periodTo;
  filter.places = settings.content.places;
  return filter;
}

GroupingMode groupingMode(const Settings& settings) {
  switch (settings.gathering.uiMode) {
    case UIGroupingMode::byDate:
      return grouping_mode::ByDate{dateGranularity(settings.gathering.granularity)};
    case UIGroupingMode::events:
      return grouping_mode::Events{};
    case UIGroupingMode::trips:
      return grouping_mode::Trips{};
    case UIGroupingMode::flat:
      return grouping_mode::Flat{};
  }
  return grouping_mode::ByDate{};
}

GroupingSettings groupingSettings(const Settings& settings) {
  GroupingSettings grouping;
  grouping.timeZone = settings.gathering.timeZone;
  grouping.cameraDays = settings.gathering.cameraDays;
  grouping.eventGapHours = settings.gathering.eventGapHours;
  grouping.eventGapKm = settings.gathering.eventGapKm;
  grouping.splitByDistance = settings.gathering.splitByDistance;
  grouping.placeRadiusKm = settings.gathering.placeRadiusKm;
  grouping.tripDistanceKm = settings.gathering.tripDistanceKm;
  grouping.tripMinDays = settings.gathering.tripMinDays;
  grouping.tripCityKm = settings.gathering.tripCityKm;
  grouping.homeRadiusKm = settings.gathering.homeRadiusKm;
  using Days = std::numeric_limits<int>;
  grouping.homeWindowDays =
      static_cast<int>(std::clamp(std::int64_t{settings.gathering.homeWindowMonths} * daysOfMonth,
                                  std::int64_t{0}, std::int64_t{Days::max()}));
  grouping.homePeriods = settings.gathering.homePeriods;
  grouping.homeOverride = settings.gathering.homeOverride;
  grouping.tripMaxGapHours = settings.gathering.tripMaxGapHours;
  return grouping;
}

const GroupMerges& ofCurrentMode(const Settings& settings,
                                 Settings::Gathering::Merges Settings::Gathering::* lists) {
  static const GroupMerges none;
  const auto& byMode = settings.gathering.*lists;
  const auto found = byMode.find(textOf(settings.gathering.uiMode));
  return found == byMode.end() ? none : found->second;
}

FolderNaming::Settings namingSettings(const Settings& settings, const std::string& systemLocaleID) {
  FolderNaming::Settings naming;
  naming.nameTemplate = settings.naming.nameTemplate;
  naming.overrides = settings.naming.nameOverrides;
  naming.timeZone = settings.gathering.timeZone;
  naming.geocodingEnabled = settings.naming.geocodingEnabled;
  naming.nameByGroupID = settings.naming.nameByGroupID;
  naming.mergeSameNames = settings.naming.mergeSameNames;
  naming.severalCities = settings.naming.severalCities;
  naming.wholeFolderDates = settings.naming.wholeFolderDates;
  naming.datelessName = settings.naming.datelessName;
  naming.systemLocaleID = systemLocaleID;
  return naming;
}

TransferOptions transferOptions(const Settings& settings, std::string_view deviceName) {
  TransferOptions options;
  options.separatePhotoVideo = settings.layout.separatePhotoVideo;
  options.flattenSingleKind = settings.layout.flattenSingleKind;
  options.onlyNew = settings.layout.onlyNew;
  options.photoFormat =
      settings.layout.photoJPEG ? PhotoOutputFormat::jpeg : PhotoOutputFormat::original;
  options.jpegQuality = settings.layout.jpegQuality;
  options.videoFormat =
      settings.layout.videoH264 ? VideoOutputFormat::h264 : VideoOutputFormat::original;
  options.container = container(settings);
  options.flatLayout = settings.gathering.uiMode == UIGroupingMode::flat;
  std::string prefix = fileNamePrefix(settings.layout.fileNamePrefixMode,
                                      settings.layout.customFileNamePrefix, deviceName);
  if (!prefix.empty()) options.fileNamePrefix = std::move(prefix);
  return options;
}

}  // namespace tavrix
