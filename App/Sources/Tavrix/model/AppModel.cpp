#include "model/AppModel.h"

#include <algorithm>
#include <utility>

#include "grouping/GroupMerging.h"
#include "media/BundleBuilder.h"
#include "model/GroupsDebug.h"
#include "settings/PersistedSettings.h"

namespace tavrix {
namespace {

/// Returns true if the folders and their names depend only on what the two have in common.
bool haveSameFolders(const Settings& a, const Settings& b) {
  return a.content == b.content && a.gathering == b.gathering && a.naming == b.naming;
}

/// Returns the places of all shots, and nullptr if places have no names.
std::shared_ptr<const PlaceLookup> lookupOf(const Library& library, const Settings& settings,
                                            const std::string& localeID, PlaceNaming* naming) {
  if (naming == nullptr || !settings.naming.geocodingEnabled) return nullptr;
  return naming->name(positionsOf(*library.filteredBundles), settings, {localeID});
}

std::string localeOf(Language language) {
  return language == Language::russian ? "ru_RU" : "en_US";
}

/// A library with the facts that its display needs.
struct Grouped {
  std::shared_ptr<const Library> library;
  std::shared_ptr<const LibraryFacts> facts;
};

}  // namespace

AppModel::AppModel(Services services, Settings settings)
    : services_(std::move(services)),
      state_(services_.loop, services_.background),
      shots_(services_.loop, services_.background),
      grouping_(services_.loop, services_.background),
      display_(services_.loop, services_.background),
      counters_(services_.loop, services_.background),
      destinationIndex_(services_.loop, services_.background),
      findings_(services_.loop, services_.background) {
  const auto& stateFolder = services_.stateFolder;
  if (stateFolder && !services_.keepsGroupsDebug) GroupsDebug::remove(*stateFolder, *services_.log);
  PersistedSettings::Values values{std::move(settings), {}};
  if (services_.defaults != nullptr) {
    PersistedSettings::forgetAtLaunch(*services_.defaults, services_.isDemo);
    values = PersistedSettings::read(*services_.defaults, std::move(values));
  }
  state_.change([&](AppState& state) {
    state.settings = std::move(values.settings);
    state.savedPresets = std::move(values.savedPresets);
  });
  writeLog(*services_.log, "AppModel init");
}

void AppModel::start() {
  if (std::exchange(isFollowing_, true)) return;
  writeLog(*services_.log, "AppModel.start()");
  if (!services_.isDemo && services_.watch) services_.watch();
}

AppModel::~AppModel() = default;

AppModel::Subscription AppModel::subscribe(Observer observer) {
  return state_.subscribe(std::move(observer));
}

bool AppModel::isSettled() const {
  return !shots_.isBusy() && !grouping_.isBusy() && !display_.isBusy() && !counters_.isBusy() &&
         !destinationIndex_.isBusy();
}

void AppModel::publishActivity() {
  const bool isComputing = !isSettled();
  if (isComputing == state_->isComputing) return;
  state_.change([&](AppState& state) { state.isComputing = isComputing; });
}

void AppModel::open(Overlay::Kind kind) {
  state_.change([&](AppState& state) { state.overlay = {std::move(kind), nextEvent()}; });
}

void AppModel::closeOverlay() {
  if (state_->overlay.is<overlay::None>()) return;
  state_.change([](AppState& state) { state.overlay.kind = overlay::None{}; });
}

std::shared_ptr<const SourceFiles> AppModel::files() const {
  const auto* const present = std::get_if<Present>(&source_);
  return present == nullptr ? nullptr : present->source.files;
}

ConnectedSource* AppModel::source() {
  if (auto* const present = std::get_if<Present>(&source_)) return &present->source;
  auto* const away = std::get_if<Away>(&source_);
  return away == nullptr ? nullptr : &away->source;
}

std::optional<PhoneIdentity> AppModel::phone() const {
  const ConnectedSource* const from = source();
  return from == nullptr ? std::nullopt : std::optional{from->phone};
}

void AppModel::deviceChanged(DeviceFacts device) {
  state_.change([&](AppState& state) { state.device = std::move(device); });
}

void AppModel::sourceReady(ConnectedSource source, DataOrigin origin) {
  const bool isTransferring = std::holds_alternative<app_phase::Transferring>(state_->phase);
  if (isTransferring && run_->now().source.phone.hash != source.phone.hash) {
    // The run continues only with its own phone. This one is read after the run.
    writeLog(*services_.log, "other device ready during transfer: left alone");
    return;
  }
  writeLog(*services_.log, "device ready: assets={}", source.assets->size());
  // The old catalogue is destroyed in the background.
  services_.background([old = source_, assets = state_->assets, bundles = allBundles_] {});
  state_.change([&](AppState& state) {
    state.origin = std::move(origin);
    state.assets = source.assets;
  });
  source_ = Present{std::move(source)};
  if (run_) run_->phoneIsBack();
  requestShots();
  if (state_->destination) refreshDestination();
}

void AppModel::sourceGone() {
  if (!std::holds_alternative<data_origin::Device>(state_->origin)) return;
  if (auto* const present = std::get_if<Present>(&source_)) {
    source_ = Away{std::move(present->source)};
  }
  if (!std::holds_alternative<app_phase::Browse>(state_->phase)) return;
  clearCatalogue();
  writeLog(*services_.log, "device gone: cleared stale catalog");
}

void AppModel::closeSource() {
  if (std::holds_alternative<app_phase::Browse>(state_->phase)) clearCatalogue();
}

void AppModel::clearCatalogue() {
  source_ = std::monostate{};
  // Pending work was made from the old catalogue, so its results are dropped.
  for (CoalescedWork* const work : {&shots_, &grouping_, &display_, &counters_}) {
    *work = CoalescedWork{services_.loop, services_.background};
  }
  services_.background([bundles = std::exchange(allBundles_, {}),
                        library = std::exchange(library_, {}), facts = std::exchange(facts_, {}),
                        planned = std::exchange(planned_, {}), totals = std::exchange(totals_, {}),
                        state = *state_] {});
  state_.change([&](AppState& state) {
    state.origin = data_origin::None{};
    state.assets = {};
    state.displayGroups = {};
    state.visibleGroups = {};
    state.navOutline = {};
    CheckMarks checks = *state.checks;
    checks.forgetSelected();
    state.checks = std::move(checks);
    state.searchSuggestions = {};
    state.findings = {};
  });
  publishCounters({}, true);
  publishActivity();
  if (isStarting()) block(TransferBlocker::noDevice);
}

void AppModel::keepChoices(const Shared<Settings>& settings,
                           const Shared<std::vector<SavedPreset>>& presets) {
  if (services_.defaults == nullptr || !services_.storing) return;
  services_.storing([defaults = services_.defaults, isDemo = services_.isDemo, settings, presets,
                     newSettings = state_->settings, newPresets = state_->savedPresets] {
    PersistedSettings::write(*defaults, {*settings, *presets}, {*newSettings, *newPresets}, isDemo);
  });
}

void AppModel::changeSavedPresets(std::vector<SavedPreset> presets) {
  const auto before = state_->savedPresets;
  state_.change([&](AppState& state) { state.savedPresets = std::move(presets); });
  keepChoices(state_->settings, before);
}

void AppModel::changeSettings(Settings settings) {
  const Shared<Settings> before = state_->settings;
  if (settings == *before) return;
  const bool isZoneChanged = settings.gathering.timeZone != before->gathering.timeZone;
  const bool areFoldersChanged = !haveSameFolders(settings, *before);
  state_.change([&](AppState& state) { state.settings = std::move(settings); });
  keepChoices(before, state_->savedPresets);
  if (isZoneChanged) {
    requestShots();
  } else if (areFoldersChanged) {
    requestGrouping();
  } else {
    requestDisplay();
  }
}

void AppModel::mergeGroups(const std::vector<std::string>& ids) {
  Settings settings = *state_->settings;
  GroupMerges& merges =
      settings.gathering.mergesByMode[std::string{textOf(settings.gathering.uiMode)}];
  merges = GroupMerging::merging(merges, ids);
  if (!merges.empty()) {
    state_.change([&](AppState& state) {
      state.highlight = Highlight{GroupMerging::mergedID(merges.back()), nextEvent()};
    });
  }
  changeSettings(std::move(settings));
}

void AppModel::unmergeGroup(const std::string& id) {
  Settings settings = *state_->settings;
  auto& mergesByMode = settings.gathering.mergesByMode;
  const auto found = mergesByMode.find(textOf(settings.gathering.uiMode));
  if (found == mergesByMode.end()) return;
  found->second = GroupMerging::unmerging(std::move(found->second), id);
  changeSettings(std::move(settings));
}

void AppModel::rejectSuggestion(const std::vector<std::string>& ids) {
  Settings settings = *state_->settings;
  const std::string mode{textOf(settings.gathering.uiMode)};
  settings.gathering.rejectedSuggestions[mode].push_back(ids);
  changeSettings(std::move(settings));
}

void AppModel::renameGroup(const std::string& id, const std::string& name) {
  Settings settings = *state_->settings;
  if (name.empty()) {
    settings.naming.nameOverrides.erase(id);
  } else {
    settings.naming.nameOverrides.insert_or_assign(id, name);
  }
  changeSettings(std::move(settings));
}

void AppModel::requestShots() {
  const ConnectedSource* const from = source();
  if (from == nullptr) return;
  // Pending groupings were made from other shots.
  grouping_ = CoalescedWork{services_.loop, services_.background};
  shots_.request([this, life = std::weak_ptr{life_}, assets = from->assets, zone = from->zone,
                  files = from->files,
                  wanted = state_->settings->gathering.timeZone]() -> CoalescedWork::Apply {
    auto again = zone != wanted ? files->assetsIn(wanted) : std::nullopt;
    const bool isAnother = again.has_value();
    const auto dated = isAnother ? Shared{*std::move(again)} : assets;
    const Shared<std::vector<AssetBundle>> bundles{BundleBuilder::makeBundles(*dated)};
    return [=, this] {
      if (!life.lock()) return;
      source()->assets = dated;
      source()->zone = isAnother ? wanted : zone;
      services_.background([old = std::exchange(allBundles_, bundles)] {});
      if (isAnother) state_.change([&](AppState& state) { state.assets = dated; });
      requestGrouping();
    };
  });
  publishActivity();
}

void AppModel::requestGrouping() {
  if (source() == nullptr || shots_.isBusy()) return;  // otherwise, once the shots land
  grouping_.request([this, life = std::weak_ptr{life_}, bundles = allBundles_,
                     fileCount = source()->assets->size(), settings = state_->settings,
                     naming = services_.placeNaming, localeID = localeOf(services_.language),
                     systemLocaleID = services_.systemLocaleID,
                     wantsReasons = services_.wantsReasons,
                     showsFolders = services_.showsFolders]() -> CoalescedWork::Apply {
    const auto library = std::make_shared<const Library>(
        makeLibrary(bundles, fileCount, *settings, systemLocaleID, wantsReasons, naming));
    const auto lookup = showsFolders ? lookupOf(*library, *settings, localeID, naming) : nullptr;
    const auto facts = std::make_shared<const LibraryFacts>(
        showsFolders ? makeFacts(library, {*settings, localeID, lookup, systemLocaleID})
                     : LibraryFacts{.groups = std::vector<GroupFacts>(library->rows.size())});
    return [=, this] {
      if (life.lock()) landLibrary(library, facts);
    };
  });
  publishActivity();
}

void AppModel::landLibrary(std::shared_ptr<const Library> library,
                           std::shared_ptr<const LibraryFacts> facts) {
  services_.background([old = std::exchange(library_, std::move(library)),
                        oldFacts = std::exchange(facts_, std::move(facts))] {});
  requestDisplay();
}

ContinuationContext AppModel::continuationContext() const {
  return {.settings = state_->settings,
          .options = transferOptions(*state_->settings, source()->deviceName),
          .systemLocaleID = services_.systemLocaleID,
          .naming = services_.placeNaming};
}

DisplayRequest AppModel::displayRequest() const {
  return {.library = library_,
          .facts = facts_,
          .destination = destination_,
          .naming = continuationContext(),
          .checks = state_->checks,
          .navSelection = state_->navSelection,
          .searchText = state_->searchText,
          .localeID = localeOf(services_.language),
          .keys = keys_,
          .shown = {.groups = state_->displayGroups,
                    .visible = state_->visibleGroups,
                    .outline = state_->navOutline,
                    .suggestions = state_->searchSuggestions,
                    .totals = totals_,
                    .counters = {}},
          .planned = planned_,
          .isBare = !services_.showsFolders};
}

void AppModel::requestDisplay() {
  if (!library_ || source() == nullptr) return;
  display_.request(
      [this, life = std::weak_ptr{life_}, request = displayRequest()]() -> CoalescedWork::Apply {
        return [this, life, result = buildDisplay(request), checks = request.checks] {
          if (life.lock()) landDisplay(result, checks);
        };
      });
  publishActivity();
}

void AppModel::landDisplay(DisplayResult result, const Shared<CheckMarks>& checks) {
  // The old display is destroyed in the background.
  services_.background([planned = std::exchange(planned_, std::move(result.planned)),
                        totals = std::exchange(totals_, result.display.totals),
                        groups = state_->displayGroups, visible = state_->visibleGroups,
                        outline = state_->navOutline] {});
  state_.change([&](AppState& state) {
    Display& display = result.display;
    state.displayGroups = std::move(display.groups);
    state.visibleGroups = std::move(display.visible);
    state.navOutline = std::move(display.outline);
    state.searchSuggestions = std::move(display.suggestions);
    if (*state.homeCandidates != library_->homeCandidates) {
      state.homeCandidates = library_->homeCandidates;
    }
    state.homeIsAmbiguous = library_->homeIsAmbiguous;
    const auto periods = library_->home ? library_->home->periods : std::vector<HomePeriod>{};
    if (*state.homePeriods != periods) state.homePeriods = periods;
    if (*state.mergeSuggestions != library_->suggestions) {
      state.mergeSuggestions = library_->suggestions;
    }
  });
  if (services_.showsFolders) {
    if (isSame(checks, state_->checks)) {
      publishCounters(result.display.counters, true);
    } else {
      recount();
    }
  }
  writeGroupsDebug();
  requestFindings();
  settled();
}

void AppModel::writeGroupsDebug() {
  if (!services_.stateFolder || !services_.keepsGroupsDebug || !services_.showsFolders) return;
  services_.background(
      [folder = *services_.stateFolder, groups = state_->displayGroups, checks = state_->checks,
       settings = state_->settings,
       &log = *services_.log] { GroupsDebug::write(folder, groups, *checks, *settings, log); });
}

void AppModel::settled() {
  publishActivity();
  if (isStarting()) proceedWithStart();
  if (run_ && isSettled()) run_->displayIsSettled();
}

void AppModel::publishCounters(const PlanCounters& counters, bool areExact) {
  state_.change([&](AppState& state) {
    state.newFilesCount = counters.newFilesCount;
    state.newBytes = counters.newBytes;
    state.knownFilesCount = counters.knownFilesCount;
    state.optimizedCount = counters.optimizedCount;
    state.areCountersExact = areExact;
  });
}

void AppModel::recount() {
  const PlanCounters sums = countersOf(*totals_, *state_->checks);
  publishCounters(sums, totals_->areApart);
  if (totals_->areApart || !library_ || source() == nullptr) return;
  // A display that is being made lands with other check marks, and then counts again.
  if (display_.isBusy() || grouping_.isBusy() || shots_.isBusy()) return;
  counters_.request([this, life = std::weak_ptr{life_}, visible = state_->visibleGroups,
                     checks = state_->checks, planned = planned_,
                     optimized = sums.optimizedCount]() -> CoalescedWork::Apply {
    const PlanCounters counted = countersOf(planned, visible, *checks, optimized);
    return [this, life, visible, checks, counters = counted] {
      if (!life.lock()) return;
      const bool isOfNow = isSame(checks, state_->checks) && isSame(visible, state_->visibleGroups);
      if (isOfNow) publishCounters(counters, true);
      settled();
    };
  });
  publishActivity();
}

void AppModel::changeChecks(CheckMarks checks) {
  if (checks == *state_->checks) return;
  state_.change([&](AppState& state) { state.checks = std::move(checks); });
  writeGroupsDebug();
  recount();
  // Without a finding about all folders there is none about a part of them.
  if (state_->findings->again.files > 0 || state_->settings->layout.packAsZip) requestFindings();
}

void AppModel::toggleGroup(const std::string& stableKey) {
  const std::uint32_t key = keys_->numberOf(stableKey);
  const auto& visible = *state_->visibleGroups;
  const bool isVisible = std::any_of(visible.begin(), visible.end(),
                                     [&](const auto& group) { return group->key == key; });
  if (!isVisible) return;
  CheckMarks checks = *state_->checks;
  checks.set(key, !checks.isIncluded(key));
  changeChecks(std::move(checks));
}

void AppModel::setIncluded(bool isIncluded) {
  CheckMarks checks = *state_->checks;
  for (const auto& group : *state_->visibleGroups) {
    if (checks.isIncluded(group->key) != isIncluded) checks.set(group->key, isIncluded);
  }
  changeChecks(std::move(checks));
}

void AppModel::includeAll() { setIncluded(true); }

void AppModel::includeNone() { setIncluded(false); }

std::vector<std::string> AppModel::selectedKeys() const {
  std::vector<std::string> keys;
  for (const std::uint32_t key : state_->checks->selected()) keys.push_back(keys_->keyOf(key));
  return keys;
}

std::vector<std::string> AppModel::excludedKeys() const {
  std::vector<std::string> keys;
  for (const std::uint32_t key : state_->checks->excluded()) keys.push_back(keys_->keyOf(key));
  return keys;
}

void AppModel::search(std::string text) {
  state_.change([&](AppState& state) { state.searchText = std::move(text); });
  requestDisplay();
}

void AppModel::navigate(NavSelection selection) {
  state_.change([&](AppState& state) { state.navSelection = std::move(selection); });
  requestDisplay();
}

}  // namespace tavrix
