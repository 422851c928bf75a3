#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "grouping/GroupMerging.h"
#include "grouping/GroupingMode.h"
#include "grouping/GroupingSettings.h"
#include "media/BundleFilter.h"
#include "naming/FileNamePrefix.h"
#include "naming/FolderNaming.h"
#include "naming/NamePresets.h"
#include "transfer/TransferOptions.h"

namespace tavrix {

enum class UIGroupingMode { byDate, events, trips, flat };
enum class UIGranularity { day, month, year };

/// "byDate", "events", "trips", "flat".
std::string_view textOf(UIGroupingMode mode);
/// "day", "month", "year".
std::string_view textOf(UIGranularity granularity);
/// The cases of a text form; nothing for any other text.
std::optional<UIGroupingMode> uiGroupingModeOf(std::string_view text);
std::optional<UIGranularity> uiGranularityOf(std::string_view text);

/// Everything that a person can choose, with its initial values; in the order of meaning.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): there is one at a time.
struct Settings {
  using Merges = std::map<std::string, GroupMerges, std::less<>>;

  // What is transferred.
  bool includePhotos = true;
  bool includeLive = true;
  bool liveOnlyPhoto = false;
  bool includeVideos = true;
  bool includeAAE = true;
  BundleFilter::EditedPolicy editedPolicy = BundleFilter::EditedPolicy::both;
  bool skipOptimized = false;
  bool onlyNew = true;
  std::optional<CivilDate> periodFrom;  ///< first day, inclusive
  std::optional<CivilDate> periodTo;    ///< last day, inclusive
  std::optional<PlaceFilter> places;    ///< everywhere when there is none; names in
                                        ///< Russian or English when it has no localeID

  // How shots are gathered into folders.
  UIGroupingMode uiMode = UIGroupingMode::events;
  UIGranularity granularity = UIGranularity::day;
  TimeZone timeZone = TimeZone::utc();  ///< in which days are cut
  double eventGapHours = 4.0;
  double eventGapKm = 30.0;
  bool splitByDistance = true;
  double placeRadiusKm = 2.0;
  double tripDistanceKm = 100.0;
  int tripMinDays = 2;
  double tripCityKm = 50.0;
  double tripMaxGapHours = 48.0;
  int homeWindowMonths = 6;
  double homeRadiusKm = 20.0;
  std::optional<GeoPoint> homeOverride;
  std::optional<std::string> homeOverrideName;  ///< as typed; that of `homeOverride`

  // How files are laid out and written.
  bool photoJPEG = false;
  double jpegQuality = 0.85;  ///< 0 to 1
  bool videoH264 = false;
  bool separatePhotoVideo = false;
  bool flattenSingleKind = false;
  FileNamePrefixMode fileNamePrefixMode = FileNamePrefixMode::none;
  std::string customFileNamePrefix;
  bool packAsZip = false;
  bool packPerGroup = false;

  // How folders are named.
  NameTemplate nameTemplate = NamePresets::defaultTemplate();
  bool geocodingEnabled = true;
  bool mergeDistricts = false;
  bool mergeSameNames = false;
  std::string datelessName = FolderNaming::initialDatelessName(Language::russian);
  bool nameByGroupID = false;
  std::map<std::string, std::string, std::less<>> nameOverrides;  ///< by group id
  Merges mergesByMode;  ///< groups shown as one, by the mode's text form

  friend bool operator==(const Settings&, const Settings&) = default;
};

/// The initial values on a machine: days are cut in its time zone, and groups without a date are
/// named in its language.
Settings initialSettings(const TimeZone& zone, const std::string& systemLocaleID);

/// What the settings mean to each part of the core.
BundleFilter bundleFilter(const Settings& settings);
GroupingMode groupingMode(const Settings& settings);
GroupingSettings groupingSettings(const Settings& settings);
FolderNaming::Settings namingSettings(const Settings& settings, const std::string& systemLocaleID);
TransferOptions transferOptions(const Settings& settings, std::string_view deviceName);

}  // namespace tavrix
