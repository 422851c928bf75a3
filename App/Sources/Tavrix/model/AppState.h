#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "SavedPreset.h"
#include "Settings.h"
#include "foundation/Shared.h"
#include "foundation/Uuid.h"
#include "model/DisplayGroup.h"
#include "model/NavOutline.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// Where the catalogue on screen came from.
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

/// Which screen is shown.
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

/// What stopped the last press of «Transfer».
enum class TransferBlocker { noDevice, noDestination, nothingSelected, quotaExhausted };

/// The state of a check mark that stands for several groups.
enum class InclusionState { all, none, some };

/// A folder of the running transfer.
struct TransferFolder {
  std::string name;
  std::uint64_t files = 0;

  friend bool operator==(const TransferFolder&, const TransferFolder&) = default;
};

/// All that an interface shows, right after construction with its initial values. Changed on the
/// main loop alone; copying it copies pointers.
struct AppState {
  using Keys = Shared<std::set<std::string, std::less<>>>;

  DataOrigin origin;
  Shared<std::vector<MediaAsset>> assets;
  /// What the person has chosen: content, grouping, naming, layout.
  Shared<Settings> settings;
  std::optional<std::string> destination;
  Shared<std::vector<SavedPreset>> savedPresets;  ///< templates that the person has saved
  bool templateEditorPresented = false;
  Keys selectedKeys;  ///< groups checked by hand
  Keys excludedKeys;  ///< groups that are not checked
  NavSelection navSelection;
  Shared<NavOutline> navOutline;
  std::string searchText;
  DisplayGroups visibleGroups;  ///< after search and sidebar
  std::vector<SearchSuggestion> searchSuggestions;
  std::optional<std::string> highlightedGroupID;
  DisplayGroups displayGroups;
  std::vector<GeoPoint> homeCandidates;
  bool homeIsAmbiguous = false;
  std::uint64_t newFilesCount = 0;  ///< of the visible, checked groups, as the next three
  std::uint64_t newBytes = 0;
  std::uint64_t knownFilesCount = 0;
  std::uint64_t optimizedCount = 0;    ///< shots, whether they are skipped or not
  std::uint64_t optimizedSkipped = 0;  ///< shots that the last run skipped
  bool optimizedInfoPresented = false;
  bool optimizedConfirmPresented = false;
  bool canCheckForUpdates = false;
  AppPhase phase;
  std::optional<TransferProgressSnapshot> progress;
  Shared<std::vector<TransferFolder>> transferFolders;
  std::uint64_t plannedConversions = 0;
  std::optional<std::string> transferPausedReason;  ///< a sentence, while a run waits
  std::optional<Uuid> lastRecordID;
  std::optional<std::string> sampleDirectory;
  std::optional<double> sampleLibraryPreparing;  ///< 0 to 1
  std::optional<TransferBlocker> transferBlocker;

  friend bool operator==(const AppState&, const AppState&) = default;
};

/// The single picker of the interface for how shots are gathered.
enum class LayoutChoice { days, months, years, events, trips };
Settings withLayout(Settings settings, LayoutChoice layout);
/// Nothing for shots that are not gathered at all.
std::optional<LayoutChoice> layoutOf(const Settings& settings);

}  // namespace tavrix
