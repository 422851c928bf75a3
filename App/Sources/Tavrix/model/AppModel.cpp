#include "model/AppModel.h"

#include <algorithm>
#include <utility>

#include "foundation/StringMap.h"
#include "grouping/GroupMerging.h"
#include "media/BundleBuilder.h"
#include "model/GroupsDebug.h"
#include "settings/PersistedSettings.h"

namespace tavrix {
namespace {

/// Returns the settings with the layout and format of files taken from `other`. These do not change
/// which folders there are.
Settings withLayoutOf(Settings settings, const Settings& other) {
  settings.onlyNew = other.onlyNew;
  settings.photoJPEG = other.photoJPEG;
  settings.jpegQuality = other.jpegQuality;
  settings.videoH264 = other.videoH264;
  settings.separatePhotoVideo = other.separatePhotoVideo;
  settings.flattenSingleKind = other.flattenSingleKind;
  settings.fileNamePrefixMode = other.fileNamePrefixMode;
  settings.customFileNamePrefix = other.customFileNamePrefix;
  settings.packAsZip = other.packAsZip;
  settings.packPerGroup = other.packPerGroup;
  return settings;
}

/// Returns the places of all shots, and nullptr if places have no names.
std::shared_ptr<const PlaceLookup> lookupOf(const Library& library, const Settings& settings,
                                            const std::string& localeID, PlaceNaming* naming) {
  if (naming == nullptr || !settings.geocodingEnabled) return nullptr;
  return naming->name(positionsOf(library.filteredBundles), settings, {localeID});
}

std::vector<GeoPoint> centersOf(const std::vector<HomeCandidate>& candidates) {
  std::vector<GeoPoint> centers;
  for (const HomeCandidate& candidate : candidates) centers.push_back(candidate.center);
  return centers;
}

std::string localeOf(Language language) {
  return language == Language::russian ? "ru_RU" : "en_US";
}

}  // namespace

AppModel::AppModel(Services services, Settings settings)
    : services_(std::move(services)),
      shots_(services_.loop, services_.background),
      grouping_(services_.loop, services_.background),
      display_(services_.loop, services_.background),
      destinationIndex_(services_.loop, services_.background) {
  const auto& stateFolder = services_.stateFolder;
  if (stateFolder && !services_.keepsGroupsDebug) GroupsDebug::remove(*stateFolder, *services_.log);
  if (services_.defaults != nullptr) {
    PersistedSettings::forgetAtLaunch(*services_.defaults, services_.isDemo);
    auto kept = PersistedSettings::read(*services_.defaults, {std::move(settings), {}});
    settings = std::move(kept.settings);
    state_.savedPresets = std::move(kept.savedPresets);
  }
  state_.settings = std::move(settings);
  writeLog(*services_.log, "AppModel init");
}

void AppModel::start() {
  if (std::exchange(isStarted_, true)) return;
  writeLog(*services_.log, "AppModel.start()");
  if (!services_.isDemo && services_.watch) services_.watch();
}

AppModel::~AppModel() = default;

AppModel::Subscription AppModel::subscribe(Observer observer) {
  auto subscription = std::make_shared<const Observer>(std::move(observer));
  observers_.push_back(subscription);
  return subscription;
}

void AppModel::change(const std::function<void(AppState&)>& edit) {
  const AppState before = state_;
  edit(state_);
  std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
  const auto observers = observers_;  // an observer may subscribe another one
  for (const auto& observer : observers) {
    if (const Subscription alive = observer.lock()) (*alive)(before, state_);
  }
}

bool AppModel::isSettled() const {
  return !shots_.isBusy() && !grouping_.isBusy() && !display_.isBusy() &&
         !destinationIndex_.isBusy();
}

void AppModel::sourceReady(ConnectedSource source, DataOrigin origin) {
  const bool isTransferring = std::holds_alternative<app_phase::Transferring>(state_.phase);
  if (isTransferring && run_->now().source.phone.hash != source.phone.hash) {
    // The run continues only with its own phone. This one is read after the run.
    writeLog(*services_.log, "other device ready during transfer: left alone");
    return;
  }
  writeLog(*services_.log, "device ready: assets={}", source.assets->size());
  isSourcePresent_ = true;
  source_ = std::move(source);
  change([&](AppState& state) {
    state.origin = std::move(origin);
    state.assets = source_->assets;
  });
  if (!source_) return;  // an observer has taken it away again
  if (run_) run_->phoneIsBack();
  requestShots();
  if (state_.destination) refreshDestination();
}

void AppModel::sourceGone() {
  if (!std::holds_alternative<data_origin::Device>(state_.origin)) return;
  isSourcePresent_ = false;
  if (!std::holds_alternative<app_phase::Browse>(state_.phase)) return;
  clearCatalogue();
  writeLog(*services_.log, "device gone: cleared stale catalog");
}

void AppModel::clearCatalogue() {
  source_.reset();
  const bool isStarting = start_ != Start::none;
  // Pending work was made from the old catalogue, so its results are dropped.
  shots_ = CoalescedWork{services_.loop, services_.background};
  grouping_ = CoalescedWork{services_.loop, services_.background};
  display_ = CoalescedWork{services_.loop, services_.background};
  services_.background([bundles = std::exchange(allBundles_, {}),
                        library = std::exchange(library_, {}), facts = std::exchange(facts_, {}),
                        planned = std::exchange(planned_, {})] {});
  change([](AppState& state) {
    state.origin = data_origin::None{};
    state.assets = {};
    state.displayGroups = {};
    state.visibleGroups = {};
    state.navOutline = {};
    state.selectedKeys = {};
    state.searchSuggestions = {};
    state.newFilesCount = state.newBytes = state.knownFilesCount = state.optimizedCount = 0;
  });
  if (isStarting) block(TransferBlocker::noDevice);
}

void AppModel::keepChoices(const Shared<Settings>& settings,
                           const Shared<std::vector<SavedPreset>>& presets) {
  if (services_.defaults == nullptr || !services_.storing) return;
  services_.storing([defaults = services_.defaults, isDemo = services_.isDemo, settings, presets,
                     newSettings = state_.settings, newPresets = state_.savedPresets] {
    PersistedSettings::write(*defaults, {*settings, *presets}, {*newSettings, *newPresets}, isDemo);
  });
}

void AppModel::changeSavedPresets(std::vector<SavedPreset> presets) {
  const auto before = state_.savedPresets;
  change([&](AppState& state) { state.savedPresets = std::move(presets); });
  keepChoices(state_.settings, before);
}

void AppModel::changeSettings(Settings settings) {
  const Shared<Settings> before = state_.settings;
  if (settings == *before) return;
  const bool isLayoutAlone = withLayoutOf(settings, *before) == *before;
  change([&](AppState& state) { state.settings = std::move(settings); });
  keepChoices(before, state_.savedPresets);
  if (state_.settings->timeZone != before->timeZone) {
    requestShots();
  } else if (isLayoutAlone) {
    requestDisplay();
  } else {
    requestGrouping();
  }
}

void AppModel::mergeGroups(const std::vector<std::string>& ids) {
  Settings settings = *state_.settings;
  GroupMerges& merges = settings.mergesByMode[std::string{textOf(settings.uiMode)}];
  merges = GroupMerging::merging(merges, ids);
  if (!merges.empty()) {
    change(
        [&](AppState& state) { state.highlightedGroupID = GroupMerging::mergedID(merges.back()); });
  }
  changeSettings(std::move(settings));
}

void AppModel::unmergeGroup(const std::string& id) {
  Settings settings = *state_.settings;
  const auto found = settings.mergesByMode.find(textOf(settings.uiMode));
  if (found == settings.mergesByMode.end()) return;
  found->second = GroupMerging::unmerging(std::move(found->second), id);
  changeSettings(std::move(settings));
}

void AppModel::renameGroup(const std::string& id, const std::string& name) {
  Settings settings = *state_.settings;
  if (name.empty()) {
    settings.nameOverrides.erase(id);
  } else {
    settings.nameOverrides.insert_or_assign(id, name);
  }
  changeSettings(std::move(settings));
}

void AppModel::requestShots() {
  if (!source_) return;
  // Pending groupings were made from other shots.
  grouping_ = CoalescedWork{services_.loop, services_.background};
  shots_.request([this, life = std::weak_ptr{life_}, assets = source_->assets, zone = source_->zone,
                  files = source_->files,
                  wanted = state_.settings->timeZone]() -> CoalescedWork::Apply {
    auto again = zone != wanted ? files->assetsIn(wanted) : std::nullopt;
    const bool isAnother = again.has_value();
    const auto dated = isAnother ? Shared{*std::move(again)} : assets;
    const Shared<std::vector<AssetBundle>> bundles{BundleBuilder::makeBundles(*dated)};
    return [=, this] {
      if (!life.lock()) return;
      source_->assets = dated;
      source_->zone = isAnother ? wanted : zone;
      allBundles_ = bundles;
      if (isAnother) change([&](AppState& state) { state.assets = dated; });
      requestGrouping();
    };
  });
}

void AppModel::requestGrouping() {
  if (!source_ || shots_.isBusy()) return;  // otherwise, once the shots land
  grouping_.request([this, life = std::weak_ptr{life_}, bundles = allBundles_,
                     fileCount = source_->assets->size(), settings = state_.settings,
                     naming = services_.placeNaming, localeID = localeOf(services_.language),
                     systemLocaleID = services_.systemLocaleID,
                     wantsReasons = services_.wantsReasons,
                     showsFolders = services_.showsFolders]() -> CoalescedWork::Apply {
    const auto library = std::make_shared<const Library>(
        makeLibrary(*bundles, fileCount, *settings, systemLocaleID, wantsReasons, naming));
    const auto lookup = showsFolders ? lookupOf(*library, *settings, localeID, naming) : nullptr;
    const auto facts = std::make_shared<const LibraryFacts>(
        showsFolders ? makeFacts(library, {*settings, localeID, lookup, systemLocaleID})
                     : makeBareFacts(library));
    return [=, this] {
      if (life.lock()) landLibrary(library, facts);
    };
  });
}

void AppModel::landLibrary(std::shared_ptr<const Library> library,
                           std::shared_ptr<const LibraryFacts> facts) {
  services_.background([old = std::exchange(library_, std::move(library)),
                        oldFacts = std::exchange(facts_, std::move(facts))] {});
  requestDisplay();
}

void AppModel::requestDisplay() {
  if (!library_ || !source_) return;
  DisplayRequest request{.library = library_,
                         .facts = facts_,
                         .destination = destination_,
                         .options = transferOptions(*state_.settings, source_->deviceName),
                         .excludedKeys = state_.excludedKeys,
                         .navSelection = state_.navSelection,
                         .searchText = state_.searchText,
                         .localeID = localeOf(services_.language),
                         .shown = state_.displayGroups,
                         .planned = planned_,
                         .isBare = !services_.showsFolders};
  display_.request(
      [this, life = std::weak_ptr{life_}, request = std::move(request)]() -> CoalescedWork::Apply {
        return [this, life, result = buildDisplay(request)] {
          if (life.lock()) landDisplay(result);
        };
      });
}

void AppModel::landDisplay(DisplayResult result) {
  services_.background([old = std::exchange(planned_, std::move(result.planned)),
                        groups = state_.displayGroups, visible = state_.visibleGroups] {});
  change([&](AppState& state) {
    Display& display = result.display;
    state.displayGroups = std::move(display.groups);
    state.visibleGroups = std::move(display.visible);
    state.navOutline = std::move(display.outline);
    state.searchSuggestions = std::move(display.suggestions);
    state.homeCandidates = centersOf(library_->homeCandidates);
    state.homeIsAmbiguous = library_->homeIsAmbiguous;
    state.newFilesCount = display.newFilesCount;
    state.newBytes = display.newBytes;
    state.knownFilesCount = display.knownFilesCount;
    state.optimizedCount = display.optimizedCount;
  });
  if (services_.stateFolder && services_.keepsGroupsDebug && services_.showsFolders) {
    services_.background(
        [folder = *services_.stateFolder, groups = state_.displayGroups, settings = state_.settings,
         &log = *services_.log] { GroupsDebug::write(folder, groups, *settings, log); });
  }
  if (start_ != Start::none) proceedWithStart();
  if (run_ && isSettled()) run_->displayIsSettled();
}

void AppModel::setIncluded(const std::function<bool(const DisplayGroup&)>& isIncluded) {
  auto selected = *state_.selectedKeys;
  auto excluded = *state_.excludedKeys;
  auto visible = *state_.visibleGroups;
  StringMap<Shared<DisplayGroup>> changed;
  for (auto& group : visible) {
    const bool is = isIncluded(*group);
    if (is == group->isIncluded) continue;
    if (is) {
      excluded.erase(group->stableKey);
      selected.insert(group->stableKey);
    } else {
      selected.erase(group->stableKey);
      excluded.insert(group->stableKey);
    }
    DisplayGroup copy = *group;
    copy.isIncluded = is;
    group = std::move(copy);
    changed.emplace(group->id, group);
  }
  if (changed.empty()) return;
  auto all = *state_.displayGroups;
  for (auto& group : all) {
    const auto found = changed.find(group->id);
    if (found != changed.end()) group = found->second;
  }
  change([&](AppState& state) {
    state.selectedKeys = std::move(selected);
    state.excludedKeys = std::move(excluded);
    state.visibleGroups = std::move(visible);
    state.displayGroups = std::move(all);
  });
  requestDisplay();
}

void AppModel::toggleGroup(const std::string& stableKey) {
  setIncluded([&](const DisplayGroup& group) {
    return group.stableKey == stableKey ? !group.isIncluded : group.isIncluded;
  });
}

void AppModel::includeAll() {
  setIncluded([](const DisplayGroup&) { return true; });
}

void AppModel::includeNone() {
  setIncluded([](const DisplayGroup&) { return false; });
}

InclusionState AppModel::inclusion() const {
  const auto& groups = *state_.visibleGroups;
  const auto included = std::count_if(groups.begin(), groups.end(),
                                      [](const auto& group) { return group->isIncluded; });
  if (included == 0) return InclusionState::none;
  return included == std::ssize(groups) ? InclusionState::all : InclusionState::some;
}

void AppModel::search(std::string text) {
  change([&](AppState& state) { state.searchText = std::move(text); });
  requestDisplay();
}

void AppModel::navigate(NavSelection selection) {
  change([&](AppState& state) { state.navSelection = std::move(selection); });
  requestDisplay();
}

void AppModel::setDestination(std::optional<std::string> destination) {
  change([&](AppState& state) {
    state.destination = std::move(destination);
    if (state.transferBlocker == TransferBlocker::noDestination) state.transferBlocker = {};
  });
  refreshDestination();
}

void AppModel::refreshDestination() {
  if (!services_.showsFolders) return;
  const PhoneIdentity phone = source_ ? source_->phone : PhoneIdentity{};
  destinationIndex_.request([this, life = std::weak_ptr{life_}, path = state_.destination, phone,
                             open = services_.openExisting]() -> CoalescedWork::Apply {
    std::shared_ptr<const Destination::Content> content;
    std::exception_ptr failure;
    try {
      const auto folder = path ? open(*path) : nullptr;
      if (folder) {
        content = std::make_shared<const Destination::Content>(Destination::read(*folder, phone));
      }
    } catch (const std::exception&) {
      failure = std::current_exception();
    }
    return [this, life, content, failure] {
      if (!life.lock()) return;
      destinationFailure_ = failure;
      services_.background([old = std::exchange(destination_, content)] {});
      requestDisplay();
    };
  });
}

}  // namespace tavrix
