#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "device/cable/DeviceState.h"
#include "foundation/Shared.h"
#include "foundation/Uuid.h"
#include "grouping/HomeDetection.h"
#include "grouping/MergeSuggestion.h"
#include "model/CheckMarks.h"
#include "model/DisplayGroup.h"
#include "model/NavOutline.h"
#include "runs/DestinationFindings.h"
#include "runs/RunPause.h"
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

/// The number of an event in a model. It grows, so that an event that happens twice in the same way
/// is seen twice.
using EventNumber = std::uint64_t;

/// The current screen.
namespace app_phase {
struct Browse {
  friend bool operator==(const Browse&, const Browse&) = default;
};
struct Transferring {
  friend bool operator==(const Transferring&, const Transferring&) = default;
};
struct Done {
  EventNumber number = 0;  ///< of the end of the run
  Shared<TransferReport> report;
  friend bool operator==(const Done&, const Done&) = default;
};
}  // namespace app_phase
using AppPhase = std::variant<app_phase::Browse, app_phase::Transferring, app_phase::Done>;

/// The obstacle at the last press of «Transfer».
enum class TransferBlocker { noDevice, noDestination, nothingSelected, quotaExhausted };

/// The one thing that lies over the screen.
namespace overlay {
struct None {
  friend bool operator==(const None&, const None&) = default;
};
struct TemplateEditor {
  friend bool operator==(const TemplateEditor&, const TemplateEditor&) = default;
};
/// The explanation of reduced copies.
struct OptimizedInfo {
  friend bool operator==(const OptimizedInfo&, const OptimizedInfo&) = default;
};
/// The question whether to transfer reduced copies.
struct OptimizedQuestion {
  friend bool operator==(const OptimizedQuestion&, const OptimizedQuestion&) = default;
};
struct Blocker {
  TransferBlocker kind = TransferBlocker::noDevice;
  friend bool operator==(const Blocker&, const Blocker&) = default;
};
/// The last start failed: the destination or the source cannot be opened.
struct StartFailure {
  std::exception_ptr error;
  friend bool operator==(const StartFailure&, const StartFailure&) = default;
};
}  // namespace overlay
struct Overlay {
  using Kind = std::variant<overlay::None, overlay::TemplateEditor, overlay::OptimizedInfo,
                            overlay::OptimizedQuestion, overlay::Blocker, overlay::StartFailure>;

  Kind kind;
  EventNumber number = 0;  ///< of its opening

  template <typename K>
  const K* as() const {
    return std::get_if<K>(&kind);
  }
  template <typename K>
  bool is() const {
    return as<K>() != nullptr;
  }
  friend bool operator==(const Overlay&, const Overlay&) = default;
};

/// The destination folder as of the last look at it.
namespace destination_state {
/// No folder is chosen, or the model does not look at it.
struct Unknown {
  friend bool operator==(const Unknown&, const Unknown&) = default;
};
struct Reading {
  friend bool operator==(const Reading&, const Reading&) = default;
};
struct Ready {
  std::uint64_t freeBytes = 0;
  friend bool operator==(const Ready&, const Ready&) = default;
};
/// It does not exist; a run creates it, if the folder that contains it exists.
struct Missing {
  friend bool operator==(const Missing&, const Missing&) = default;
};
/// Another run is writing to it.
struct Busy {
  std::uint64_t freeBytes = 0;
  friend bool operator==(const Busy&, const Busy&) = default;
};
/// It cannot be used.
struct Refused {
  std::exception_ptr error;
  friend bool operator==(const Refused&, const Refused&) = default;
};
}  // namespace destination_state
using DestinationState =
    std::variant<destination_state::Unknown, destination_state::Reading, destination_state::Ready,
                 destination_state::Missing, destination_state::Busy, destination_state::Refused>;

/// The phones on the cable.
struct DeviceFacts {
  DeviceState state;
  bool isUnseen = false;             ///< a phone is on the bus, but the system does not provide it
  std::vector<PhoneOnCable> others;  ///< except the one that `state` describes

  friend bool operator==(const DeviceFacts&, const DeviceFacts&) = default;
};

/// A group to draw attention to, after a merge.
struct Highlight {
  std::string groupID;
  EventNumber number = 0;

  friend bool operator==(const Highlight&, const Highlight&) = default;
};

/// The state of a check mark for several groups.
enum class InclusionState { all, none, some };

/// A folder of the current run.
struct TransferFolder {
  std::string name;
  std::uint64_t files = 0;

  friend bool operator==(const TransferFolder&, const TransferFolder&) = default;
};

/// Everything that an interface displays; valid right after construction with its initial values.
/// Changed only on the main loop. Copying it copies little more than pointers.
struct AppState {
  DataOrigin origin;
  Shared<std::vector<MediaAsset>> assets;
  Shared<DeviceFacts> device;
  /// The user's choices: content, grouping, naming, layout.
  Shared<Settings> settings;
  std::optional<std::string> destination;
  DestinationState destinationState;
  /// About a transfer of the visible, checked groups to the destination. Follows the counters after
  /// a while. Empty unless ModelServices::looksAhead.
  Shared<DestinationFindings> findings;
  Shared<std::vector<SavedPreset>> savedPresets;  ///< templates that the user has saved
  Shared<CheckMarks> checks;
  NavSelection navSelection;
  Shared<NavOutline> navOutline;
  std::string searchText;
  DisplayGroups visibleGroups;  ///< filtered by search and sidebar
  Shared<std::vector<SearchSuggestion>> searchSuggestions;
  std::optional<Highlight> highlight;
  DisplayGroups displayGroups;
  Shared<std::vector<HomeCandidate>> homeCandidates;  ///< with their days, best first
  bool homeIsAmbiguous = false;
  Shared<std::vector<HomePeriod>> homePeriods;            ///< empty if there is only one home
  Shared<std::vector<MergeSuggestion>> mergeSuggestions;  ///< in chronological order
  std::uint64_t newFilesCount = 0;  ///< this and the next three: of the visible, checked groups
  std::uint64_t newBytes = 0;
  std::uint64_t knownFilesCount = 0;
  std::uint64_t optimizedCount = 0;  ///< shots, whether skipped or not
  /// False while the counters are sums over folders that share paths: a plan is being made that
  /// will count exactly.
  bool areCountersExact = true;
  std::uint64_t optimizedSkipped = 0;  ///< shots that the last run skipped
  bool isComputing = false;            ///< folders or counters are about to change
  bool canCheckForUpdates = false;
  Overlay overlay;
  AppPhase phase;
  std::optional<TransferProgressSnapshot> progress;
  Shared<std::vector<TransferFolder>> transferFolders;
  std::uint64_t plannedConversions = 0;
  std::optional<RunPause> pause;  ///< set while a run waits
  std::optional<Uuid> lastRecordID;
  std::optional<std::string> sampleDirectory;
  std::optional<double> sampleLibraryPreparing;  ///< 0 to 1

  friend bool operator==(const AppState&, const AppState&) = default;
};

/// Values that follow from the state.
bool templateEditorPresented(const AppState& state);
bool optimizedInfoPresented(const AppState& state);
bool optimizedConfirmPresented(const AppState& state);
std::optional<TransferBlocker> transferBlocker(const AppState& state);
std::optional<std::string> highlightedGroupID(const AppState& state);
/// Returns the sentence for the user while a run waits, and nullopt otherwise.
std::optional<std::string> transferPausedReason(const AppState& state, Language language);
/// Returns true if the group is checked.
bool isIncluded(const AppState& state, const DisplayGroup& group);
/// Returns how many of the visible groups are checked.
InclusionState inclusion(const AppState& state);

/// The choices of the interface for grouping shots.
enum class LayoutChoice { days, months, years, events, trips };
Settings withLayout(Settings settings, LayoutChoice layout);
/// Returns nullopt if shots are not grouped.
std::optional<LayoutChoice> layoutOf(const Settings& settings);

}  // namespace tavrix
