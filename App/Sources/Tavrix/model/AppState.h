#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "foundation/Shared.h"
#include "foundation/Uuid.h"
#include "model/DisplayGroup.h"
#include "model/NavOutline.h"
#include "settings/SavedPreset.h"
#include "settings/Settings.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// The origin of the catalogue on screen.
namespace data_origin {
struct None {
  friend bool operator==(const None&, const None&) = default;
};
struct Device {
  std::string name;
  friend bool operator==(const Device&, const Device&) = default;
};
struct Snapshot {
  std::optional<Instant> date;
  friend bool operator==(const Snapshot&, const Snapshot&) = default;
};
}  // namespace data_origin
using DataOrigin = std::variant<data_origin::None, data_origin::Device, data_origin::Snapshot>;

/// The current screen.
namespace app_phase {
struct Browse {
  friend bool operator==(const Browse&, const Browse&) = default;
};
struct Transferring {
  friend bool operator==(const Transferring&, const Transferring&) = default;
};
struct Done {
  Shared<TransferReport> report;
  friend bool operator==(const Done&, const Done&) = default;
};
}  // namespace app_phase
using AppPhase = std::variant<app_phase::Browse, app_phase::Transferring, app_phase::Done>;

/// The obstacle at the last press of «Transfer».
enum class TransferBlocker { noDevice, noDestination, nothingSelected, quotaExhausted };

/// The state of a check mark for several groups.
enum class InclusionState { all, none, some };

/// A folder of the current run.
struct TransferFolder {
  std::string name;
  std::uint64_t files = 0;

  friend bool operator==(const TransferFolder&, const TransferFolder&) = default;
};

/// Everything that an interface displays; valid right after construction with its initial values.
/// Changed only on the main loop. Copying it copies only pointers.
struct AppState {
  using Keys = Shared<std::set<std::string, std::less<>>>;

  DataOrigin origin;
  Shared<std::vector<MediaAsset>> assets;
  /// The user's choices: content, grouping, naming, layout.
  Shared<Settings> settings;
  std::optional<std::string> destination;
  Shared<std::vector<SavedPreset>> savedPresets;  ///< templates that the user has saved
  bool templateEditorPresented = false;
  Keys selectedKeys;  ///< groups that the user has checked
  Keys excludedKeys;  ///< unchecked groups
  NavSelection navSelection;
  Shared<NavOutline> navOutline;
  std::string searchText;
  DisplayGroups visibleGroups;  ///< filtered by search and sidebar
  std::vector<SearchSuggestion> searchSuggestions;
  std::optional<std::string> highlightedGroupID;
  DisplayGroups displayGroups;
  std::vector<GeoPoint> homeCandidates;
  bool homeIsAmbiguous = false;
  std::uint64_t newFilesCount = 0;  ///< this and the next three: of the visible, checked groups
  std::uint64_t newBytes = 0;
  std::uint64_t knownFilesCount = 0;
  std::uint64_t optimizedCount = 0;    ///< shots, whether skipped or not
  std::uint64_t optimizedSkipped = 0;  ///< shots that the last run skipped
  bool optimizedInfoPresented = false;
  bool optimizedConfirmPresented = false;
  bool canCheckForUpdates = false;
  AppPhase phase;
  std::optional<TransferProgressSnapshot> progress;
  Shared<std::vector<TransferFolder>> transferFolders;
  std::uint64_t plannedConversions = 0;
  std::optional<std::string> transferPausedReason;  ///< a sentence, while a run is paused
  std::optional<Uuid> lastRecordID;
  std::optional<std::string> sampleDirectory;
  std::optional<double> sampleLibraryPreparing;  ///< 0 to 1
  std::optional<TransferBlocker> transferBlocker;

  friend bool operator==(const AppState&, const AppState&) = default;
};

/// The choices of the interface for grouping shots.
enum class LayoutChoice { days, months, years, events, trips };
Settings withLayout(Settings settings, LayoutChoice layout);
/// Returns nullopt if shots are not grouped.
std::optional<LayoutChoice> layoutOf(const Settings& settings);

}  // namespace tavrix
