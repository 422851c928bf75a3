#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
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

/// Returns "byDate", "events", "trips" or "flat".
std::string_view textOf(UIGroupingMode mode);
/// Returns "day", "month" or "year".
std::string_view textOf(UIGranularity granularity);
/// Return the value that has this text form. Return nullopt for any other text.
std::optional<UIGroupingMode> uiGroupingModeOf(std::string_view text);
std::optional<UIGranularity> uiGranularityOf(std::string_view text);

/// All choices of the user with their initial values.
struct Settings {
  /// Selection of the files to transfer.
  struct Content {
    bool includePhotos = true;
    bool includeLive = true;
    bool liveOnlyPhoto = false;
    bool includeVideos = true;
    bool includeAAE = true;
    BundleFilter::EditedPolicy editedPolicy = BundleFilter::EditedPolicy::both;
    bool skipOptimized = false;
    std::optional<CivilDate> periodFrom;  ///< first day, inclusive
    std::optional<CivilDate> periodTo;    ///< last day, inclusive
    std::optional<PlaceFilter> places;    ///< nullopt: everywhere; the names are in
                                          ///< Russian or English if it has no localeID

    friend bool operator==(const Content&, const Content&) = default;
  };

  /// Grouping of shots into folders.
  struct Gathering {
    using Merges = std::map<std::string, GroupMerges, std::less<>>;

    UIGroupingMode uiMode = UIGroupingMode::events;
    UIGranularity granularity = UIGranularity::day;
    TimeZone timeZone = TimeZone::utc();  ///< the zone in which days begin and end
    bool cameraDays = false;              ///< days are those of the cameras' clocks instead
    bool datesFromNames = true;           ///< the files of a folder may be dated by their names
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
    bool homePeriods = false;  ///< an owner who has moved has several homes, one after another
    std::optional<GeoPoint> homeOverride;
    std::optional<std::string> homeOverrideName;  ///< as typed; belongs to `homeOverride`
    Merges mergesByMode;                          ///< merged groups by the text form of the mode
    Merges rejectedSuggestions;  ///< merges that the user does not want, by the form of the mode

    friend bool operator==(const Gathering&, const Gathering&) = default;
  };

  /// Places and formats of the files in their folders. It does not affect which folders there are.
  struct Layout {
    bool onlyNew = true;
    bool continueFolders = true;  ///< a folder that got more shots keeps its name
    bool photoJPEG = false;
    double jpegQuality = 0.85;  ///< 0 to 1
    bool videoH264 = false;
    bool separatePhotoVideo = false;
    bool flattenSingleKind = false;
    FileNamePrefixMode fileNamePrefixMode = FileNamePrefixMode::none;
    std::string customFileNamePrefix;
    bool packAsZip = false;
    bool packPerGroup = false;

    friend bool operator==(const Layout&, const Layout&) = default;
  };

  /// Names of the folders.
  struct Naming {
    NameTemplate nameTemplate = NamePresets::defaultTemplate();
    bool geocodingEnabled = true;
    bool mergeDistricts = false;
    bool mergeSameNames = false;
    bool severalCities = false;     ///< two cities where none has half of the shots
    bool wholeFolderDates = false;  ///< no day in the names of months, no month in those of years
    std::string datelessName = FolderNaming::initialDatelessName(Language::russian);
    bool nameByGroupID = false;
    std::map<std::string, std::string, std::less<>> nameOverrides;  ///< by group id

    friend bool operator==(const Naming&, const Naming&) = default;
  };

  Content content;
  Gathering gathering;
  Layout layout;
  Naming naming;

  friend bool operator==(const Settings&, const Settings&) = default;
};

/// Returns the lists of the current mode; empty if it has none.
const GroupMerges& ofCurrentMode(const Settings& settings,
                                 Settings::Gathering::Merges Settings::Gathering::* lists);

/// Returns a setting by a pointer to its member: `at(settings, &Settings::Layout::onlyNew)`.
/// `settings` may be const.
template <typename AnySettings, typename Part, typename Value>
auto& at(AnySettings& settings, Value Part::* field) {
  if constexpr (std::is_same_v<Part, Settings::Content>) {
    return settings.content.*field;
  } else if constexpr (std::is_same_v<Part, Settings::Gathering>) {
    return settings.gathering.*field;
  } else if constexpr (std::is_same_v<Part, Settings::Layout>) {
    return settings.layout.*field;
  } else {
    return settings.naming.*field;
  }
}

/// Returns the initial values on a machine: its time zone separates the days, and its language
/// names the groups without a date.
Settings initialSettings(const TimeZone& zone, const std::string& systemLocaleID);

/// Translate the settings for each part of the core.
BundleFilter bundleFilter(const Settings& settings);
GroupingMode groupingMode(const Settings& settings);
GroupingSettings groupingSettings(const Settings& settings);
FolderNaming::Settings namingSettings(const Settings& settings, const std::string& systemLocaleID);
TransferOptions transferOptions(const Settings& settings, std::string_view deviceName);

}  // namespace tavrix
