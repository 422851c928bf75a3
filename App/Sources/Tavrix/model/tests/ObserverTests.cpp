// The changes that observers of a model see, and that an interface needs nothing else.

#include "model/tests/support/ModelHarness.h"

namespace tavrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// An interface that knows nothing but what it is told.
struct Screen {
  explicit Screen(AppModel& model)
      : subscription(model.subscribe([this](const StateChange& change) { see(change); })) {}

  void see(const StateChange& change) {
    if (change.has(StateTopic::questions)) seeOverlay(change.after.overlay);
    if (change.has(StateTopic::progress) && change.before.pause != change.after.pause) {
      lines.push_back(transferPausedReason(change.after, Language::russian).value_or("дальше"));
    }
    if (change.has(StateTopic::phase)) seePhase(change.before.phase, change.after.phase);
    if (change.has(StateTopic::destination)) destination = change.after.destinationState;
  }
  void seeOverlay(const Overlay& overlay) {
    if (overlay.number == lastOverlay) return;  // closed
    lastOverlay = overlay.number;
    if (const auto* const blocker = overlay.as<overlay::Blocker>()) {
      constexpr std::array<const char*, 4> names{"noDevice", "noDestination", "nothingSelected",
                                                 "quotaExhausted"};
      lines.emplace_back(names.at(static_cast<std::size_t>(blocker->kind)));
    }
    if (overlay.is<overlay::OptimizedQuestion>()) lines.emplace_back("question");
    if (overlay.is<overlay::StartFailure>()) lines.emplace_back("failure");
  }
  void seePhase(const AppPhase& before, const AppPhase& after) {
    if (before.index() == after.index() && !std::holds_alternative<app_phase::Done>(after)) return;
    constexpr std::array<const char*, 3> names{"browse", "transferring", "done"};
    lines.emplace_back(names.at(after.index()));
  }
  std::vector<std::string> take() { return std::exchange(lines, {}); }

  std::vector<std::string> lines;
  DestinationState destination;
  EventNumber lastOverlay = 0;
  AppModel::Subscription subscription;
};

struct ObserverTest : testing::Test, ModelHarness {
  std::vector<std::string> transfer() {
    model->startTransfer();
    settle();
    return screen.take();
  }
  template <typename State>
  bool shows() const {
    return std::holds_alternative<State>(screen.destination);
  }

  Screen screen{*model};
};

TEST_F(ObserverTest, whatHappensTwice_isSeenTwice) {
  EXPECT_THAT(transfer(), ElementsAre("noDevice"));
  EXPECT_THAT(transfer(), ElementsAre("noDevice"));
  plug();
  settle();
  EXPECT_THAT(transfer(), ElementsAre("noDestination"));
  model->setDestination(destination / "a/b");
  EXPECT_THAT(transfer(), ElementsAre("failure"));
  EXPECT_THAT(transfer(), ElementsAre("failure"));
  model->setDestination(destination.path());
  settle();
  model->includeNone();
  EXPECT_THAT(transfer(), ElementsAre("nothingSelected"));
  model->includeAll();
  phone.addFile(12, true);
  plug();
  settle();
  EXPECT_THAT(transfer(), ElementsAre("question"));
  model->closeOverlay();
  EXPECT_THAT(transfer(), ElementsAre("question"));
  model->transferEverything();
  settle();
  EXPECT_THAT(screen.take(), ElementsAre("transferring", "done"));
  model->leaveSummary();
  settle();
  EXPECT_THAT(screen.take(), ElementsAre("browse"));
}

TEST_F(ObserverTest, pauses_areToldWithTheirReason) {
  makeReady();
  screen.take();
  phone.filesUntilUnplugged = 5;
  EXPECT_THAT(transfer(),
              ElementsAre("transferring", "iPhone отключён. Подключите кабель — продолжу сам."));
  phone.isPlugged = true;
  phone.filesUntilUnplugged = -1;
  writesUntilFull = 2;
  plug();
  settle();
  const auto lines = screen.take();
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ(lines[0], "дальше");
  EXPECT_THAT(lines[1], testing::HasSubstr("нужно ещё 47\u00a0Б (свободно 3\u00a0Б)"));
  {
    // Another run begins to write to the folder.
    const auto other = openFolder(destination.path());
    ASSERT_TRUE(other->lock());
    writesUntilFull = -1;
    loop.advance(seconds{5});
    settle();
    EXPECT_THAT(screen.take(),
                ElementsAre("В эту папку сейчас пишет другой перенос. Когда он закончится — "
                            "продолжу сам."));
  }
  loop.advance(seconds{5});
  settle();
  EXPECT_THAT(screen.take(), ElementsAre("дальше", "done"));
  EXPECT_EQ(report().copied, 12);
}

TEST_F(ObserverTest, destination_isToldAsItIs) {
  plug();
  settle();
  EXPECT_TRUE(shows<destination_state::Unknown>());
  model->setDestination(destination.path());
  while (loop.runOne()) {
  }
  EXPECT_TRUE(shows<destination_state::Reading>());
  settle();
  EXPECT_EQ(screen.destination, DestinationState{destination_state::Ready{1'000'000}});
  model->setDestination(destination / "new");
  settle();
  EXPECT_TRUE(shows<destination_state::Missing>());
  const auto other = openFolder(destination.path());
  ASSERT_TRUE(other->lock());
  model->setDestination(destination.path());
  settle();
  EXPECT_TRUE(shows<destination_state::Busy>());
  destination.write("file", "");
  model->setDestination(destination / "file");
  settle();
  EXPECT_TRUE(shows<destination_state::Refused>());
}

TEST_F(ObserverTest, runThatIsCancelledWhenItIsFirstSeen_copiesNothing) {
  makeReady();
  const auto interface = model->subscribe([&](const StateChange& change) {
    if (change.has(StateTopic::phase)) model->cancelTransfer();
  });
  model->refreshDestination();
  model->startTransfer();
  settle();
  EXPECT_EQ(record().status, TransferRecord::Status::cancelled);
  EXPECT_THAT(filesOnDisk(), IsEmpty());
  EXPECT_TRUE(shows<destination_state::Ready>()) << "its own preparation does not make it busy";
}

TEST_F(ObserverTest, destinationLookedAtAgain_changesNothing) {
  makeReady();
  const AppState before = state();
  std::size_t calls = 0;
  const auto subscription = model->subscribe([&](const StateChange& change) {
    if (change.topics != StateTopics{StateTopic::counters}) ++calls;  // it was computing
  });
  model->refreshDestination();
  settle();
  EXPECT_EQ(calls, 0);
  EXPECT_TRUE(changedTopics(before, state()).isEmpty());
}

TEST_F(ObserverTest, manyChangesInOneTurn_areToldOnceAndByTopic) {
  makeReady();
  std::vector<StateTopics> told;
  const auto subscription =
      model->subscribe([&](const StateChange& change) { told.push_back(change.topics); });
  model->toggleGroup("2026-05-20");
  model->toggleGroup("2026-05-21");
  model->toggleGroup("2026-05-20");
  EXPECT_THAT(told, IsEmpty()) << "not in the middle of a change";
  settle();
  EXPECT_THAT(told, ElementsAre(StateTopics{StateTopic::checks, StateTopic::counters}));
}

TEST_F(ObserverTest, observerThatCallsBack_showsNobodyAnEffectBeforeItsCause) {
  makeReady();
  // The first observer takes every check away again.
  const auto first = model->subscribe([&](const StateChange& change) {
    if (change.has(StateTopic::checks)) model->includeAll();
  });
  std::vector<InclusionState> seen;
  const auto second = model->subscribe([&](const StateChange& change) {
    if (change.has(StateTopic::checks)) seen.push_back(inclusion(change.after));
  });
  model->includeNone();
  settle();
  EXPECT_THAT(seen, ElementsAre(InclusionState::none, InclusionState::all));
}

TEST_F(ObserverTest, observerThatEndsItself_orSubscribesAnother_isSafe) {
  makeReady();
  AppModel::Subscription first;
  AppModel::Subscription second;
  int calls = 0;
  first = model->subscribe([&](const StateChange&) {
    ++calls;
    second = model->subscribe([&](const StateChange&) { calls += 10; });
    first = nullptr;
  });
  model->includeNone();
  settle();
  EXPECT_EQ(calls, 1);
  model->includeAll();
  settle();
  EXPECT_EQ(calls, 11);
}

TEST_F(ObserverTest, checks_touchNoFolder) {
  makeReady();
  const auto before = state().displayGroups;
  model->includeNone();
  EXPECT_TRUE(isSame(before, state().displayGroups));
  EXPECT_EQ(state().newFilesCount, 0);
  EXPECT_TRUE(state().areCountersExact);
  EXPECT_EQ(background.waiting(), 0) << "nothing is left to compute";
  EXPECT_THAT(model->excludedKeys(), SizeIs(4));
  model->toggleGroup("2026-05-21");
  EXPECT_EQ(state().newFilesCount, 3);
  EXPECT_THAT(model->selectedKeys(), ElementsAre("2026-05-21"));
}

TEST_F(ObserverTest, foldersThatShareOneName_areCountedByAPlan) {
  // A copy of another picture lies at the numbered path that the second folder's picture would
  // take.
  Settings settings = *state().settings;
  settings.naming.mergeSameNames = true;
  for (const auto* const day : {"2026-05-20", "2026-05-21"}) {
    settings.naming.nameOverrides[day] = "Дача";
  }
  model->changeSettings(settings);
  phone.addNamesake(0, 25);  // the name of the first day's first picture, on the second day
  makeReady();
  EXPECT_EQ(state().newFilesCount, 13);
  destination.write("Дача/IMG_0000.HEIC", "already there");
  model->refreshDestination();
  settle();
  EXPECT_EQ(state().newFilesCount, 12) << "one takes the place of that file, the other a number";
  model->toggleGroup("2026-05-20");
  EXPECT_FALSE(state().areCountersExact);
  EXPECT_EQ(state().newFilesCount, 10) << "the sum over the folders";
  settle();
  EXPECT_TRUE(state().areCountersExact);
  EXPECT_EQ(state().newFilesCount, 9) << "alone, the second folder's picture takes that place";
}

TEST_F(ObserverTest, foldersWhoseNamesDifferByCase_areCountedByAPlan) {
  Settings settings = *state().settings;
  settings.naming.mergeSameNames = true;
  settings.naming.nameOverrides = {{"2026-05-20", "Дача"}, {"2026-05-21", "ДАЧА"}};
  model->changeSettings(settings);
  makeReady();
  model->toggleGroup("2026-05-20");
  EXPECT_FALSE(state().areCountersExact) << "many disks take them for one folder";
  settle();
  EXPECT_TRUE(state().areCountersExact);
}

TEST(StateTopics, everyField_belongsToATopic) {
  const std::vector<std::pair<StateTopic, std::function<void(AppState&)>>> edits{
      {StateTopic::device, [](AppState& s) { s.origin = data_origin::Snapshot{}; }},
      {StateTopic::device, [](AppState& s) { s.assets = std::vector<MediaAsset>{}; }},
      {StateTopic::device, [](AppState& s) { s.device = DeviceFacts{}; }},
      {StateTopic::device, [](AppState& s) { s.sampleDirectory = "x"; }},
      {StateTopic::device, [](AppState& s) { s.sampleLibraryPreparing = 0.5; }},
      {StateTopic::settings, [](AppState& s) { s.settings = Settings{}; }},
      {StateTopic::settings, [](AppState& s) { s.savedPresets = std::vector<SavedPreset>{}; }},
      {StateTopic::settings, [](AppState& s) { s.homeCandidates = std::vector<HomeCandidate>{}; }},
      {StateTopic::settings, [](AppState& s) { s.homeIsAmbiguous = true; }},
      {StateTopic::settings, [](AppState& s) { s.canCheckForUpdates = true; }},
      {StateTopic::destination, [](AppState& s) { s.destination = "x"; }},
      {StateTopic::destination,
       [](AppState& s) { s.destinationState = destination_state::Missing{}; }},
      {StateTopic::checks, [](AppState& s) { s.checks = CheckMarks{}; }},
      {StateTopic::outline, [](AppState& s) { s.navSelection = nav_selection::NoPlace{}; }},
      {StateTopic::outline, [](AppState& s) { s.navOutline = NavOutline{}; }},
      {StateTopic::outline, [](AppState& s) { s.searchText = "x"; }},
      {StateTopic::outline,
       [](AppState& s) { s.searchSuggestions = std::vector<SearchSuggestion>{}; }},
      {StateTopic::rows,
       [](AppState& s) { s.visibleGroups = std::vector<Shared<DisplayGroup>>{}; }},
      {StateTopic::rows,
       [](AppState& s) { s.displayGroups = std::vector<Shared<DisplayGroup>>{}; }},
      {StateTopic::questions, [](AppState& s) { s.highlight = Highlight{}; }},
      {StateTopic::questions, [](AppState& s) { ++s.overlay.number; }},
      {StateTopic::counters, [](AppState& s) { s.newFilesCount = 1; }},
      {StateTopic::counters, [](AppState& s) { s.newBytes = 1; }},
      {StateTopic::counters, [](AppState& s) { s.knownFilesCount = 1; }},
      {StateTopic::counters, [](AppState& s) { s.optimizedCount = 1; }},
      {StateTopic::counters, [](AppState& s) { s.areCountersExact = false; }},
      {StateTopic::counters, [](AppState& s) { s.isComputing = true; }},
      {StateTopic::phase, [](AppState& s) { s.optimizedSkipped = 1; }},
      {StateTopic::phase, [](AppState& s) { s.phase = app_phase::Done{1, {}}; }},
      {StateTopic::phase, [](AppState& s) { s.transferFolders = std::vector<TransferFolder>{}; }},
      {StateTopic::phase, [](AppState& s) { s.plannedConversions = 1; }},
      {StateTopic::phase, [](AppState& s) { s.lastRecordID = Uuid{}; }},
      {StateTopic::progress, [](AppState& s) { s.progress.emplace(); }},
      {StateTopic::progress, [](AppState& s) { s.pause = run_pause::Busy{}; }},
  };
  for (std::size_t i = 0; i < edits.size(); ++i) {
    AppState after;
    edits[i].second(after);
    EXPECT_EQ(changedTopics({}, after), StateTopics{edits[i].first}) << i;
  }
}

}  // namespace
}  // namespace tavrix
