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
  if (!settings.packAsZip) return folder;
  return settings.packPerGroup ? zipPerGroup : zipWhole;
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
  settings.timeZone = zone;
  settings.datelessName = FolderNaming::initialDatelessName(languageOfLocale(systemLocaleID));
  return settings;
}

BundleFilter bundleFilter(const Settings& settings) {
  BundleFilter filter;
  filter.includePhotos = settings.includePhotos;
  filter.includeLive = settings.includeLive;
  filter.liveOnlyPhoto = settings.liveOnlyPhoto;
  filter.includeVideos = settings.includeVideos;
  filter.includeAAE = settings.includeAAE;
  filter.editedPolicy = settings.editedPolicy;
  filter.skipOptimized = settings.skipOptimized;
  filter.from = settings.periodFrom;
  filter.to = settings.periodTo;
  filter.places = settings.places;
  return filter;
}

GroupingMode groupingMode(const Settings& settings) {
  switch (settings.uiMode) {
    case UIGroupingMode::byDate:
      return grouping_mode::ByDate{dateGranularity(settings.granularity)};
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
  grouping.timeZone = settings.timeZone;
  grouping.eventGapHours = settings.eventGapHours;
  grouping.eventGapKm = settings.eventGapKm;
  grouping.splitByDistance = settings.splitByDistance;
  grouping.placeRadiusKm = settings.placeRadiusKm;
  grouping.tripDistanceKm = settings.tripDistanceKm;
  grouping.tripMinDays = settings.tripMinDays;
  grouping.tripCityKm = settings.tripCityKm;
  grouping.homeRadiusKm = settings.homeRadiusKm;
  using Days = std::numeric_limits<int>;
  grouping.homeWindowDays =
      static_cast<int>(std::clamp(std::int64_t{settings.homeWindowMonths} * daysOfMonth,
                                  std::int64_t{0}, std::int64_t{Days::max()}));
  grouping.homeOverride = settings.homeOverride;
  grouping.tripMaxGapHours = settings.tripMaxGapHours;
  return grouping;
}

FolderNaming::Settings namingSettings(const Settings& settings, const std::string& systemLocaleID) {
  FolderNaming::Settings naming;
  naming.nameTemplate = settings.nameTemplate;
  naming.overrides = settings.nameOverrides;
  naming.timeZone = settings.timeZone;
  naming.geocodingEnabled = settings.geocodingEnabled;
  naming.nameByGroupID = settings.nameByGroupID;
  naming.mergeSameNames = settings.mergeSameNames;
  naming.placeRadiusKm = settings.placeRadiusKm;
  naming.datelessName = settings.datelessName;
  naming.systemLocaleID = systemLocaleID;
  return naming;
}

TransferOptions transferOptions(const Settings& settings, std::string_view deviceName) {
  TransferOptions options;
  options.separatePhotoVideo = settings.separatePhotoVideo;
  options.flattenSingleKind = settings.flattenSingleKind;
  options.onlyNew = settings.onlyNew;
  options.photoFormat = settings.photoJPEG ? PhotoOutputFormat::jpeg : PhotoOutputFormat::original;
  options.jpegQuality = settings.jpegQuality;
  options.videoFormat = settings.videoH264 ? VideoOutputFormat::h264 : VideoOutputFormat::original;
  options.container = container(settings);
  options.flatLayout = settings.uiMode == UIGroupingMode::flat;
  std::string prefix =
      fileNamePrefix(settings.fileNamePrefixMode, settings.customFileNamePrefix, deviceName);
  if (!prefix.empty()) options.fileNamePrefix = std::move(prefix);
  return options;
}

}  // namespace tavrix
