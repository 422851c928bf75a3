// Long random walks over everything that a caller can do with a model and that can happen to it.

#include <cstdlib>
#include <random>

#include "model/tests/support/ModelHarness.h"

namespace tavrix {
namespace {

class Walk : public ModelHarness {
 public:
  explicit Walk(unsigned seed) : random_(seed) {
    phone.addFile(45, true);
    makeReady();
    for (int i = 0; i < 2; ++i) {
      meddlers_.push_back(model->subscribe([this](const StateChange& change) { meddle(change); }));
    }
    mirrored_ = state();
    mirror_ = model->subscribe([this](const StateChange& change) { follow(change); });
  }

  void step() {
    static const std::vector<void (Walk::*)()> actions{
        &Walk::work,   &Walk::work,      &Walk::work,      &Walk::work,     &Walk::work,
        &Walk::toggle, &Walk::chooseAll, &Walk::narrow,    &Walk::regroup,  &Walk::layOut,
        &Walk::merge,  &Walk::press,     &Walk::press,     &Walk::answer,   &Walk::cancel,
        &Walk::leave,  &Walk::leave,     &Walk::cable,     &Walk::disk,     &Walk::shoot,
        &Walk::lose,   &Walk::wait,      &Walk::settleAll, &Walk::settleAll};
    (this->*actions[pick(actions.size())])();
    check();
  }

  /// Whatever happened before, the model settles once everything works again.
  void comeToRest() {
    isMeddling_ = false;
    writesUntilFull = -1;
    phone.isPlugged = true;
    phone.filesUntilUnplugged = -1;
    plug();
    settle();
    loop.advance(std::chrono::seconds{10});
    settle();
    loop.advance(std::chrono::seconds{10});
    settle();
    EXPECT_FALSE(isTransferring());
    model->closeOverlay();
    model->leaveSummary();
    settle();
    EXPECT_TRUE(isBrowsing());
    EXPECT_EQ(mirrored_, state()) << "observers have seen everything";
    check();
  }

  int runs() const { return runs_; }

 private:
  std::size_t pick(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>{0, count - 1}(random_);
  }
  bool coin() { return pick(2) == 0; }

  void work() {
    switch (pick(3)) {
      case 0:
        loop.runOne();
        break;
      case 1:
        background.runOne();
        break;
      default:
        transferring.runOne();
    }
  }
  void settleAll() { settle(); }
  void toggle() {
    const auto& groups = *state().visibleGroups;
    if (!groups.empty()) model->toggleGroup(groups[pick(groups.size())]->stableKey);
  }
  void chooseAll() { coin() ? model->includeAll() : model->includeNone(); }
  void narrow() {
    const std::vector<NavSelection> selections{
        nav_selection::All{},      nav_selection::All{},     nav_selection::Month{2026, 5},
        nav_selection::Year{2026}, nav_selection::NoPlace{}, nav_selection::Place{"Москва"}};
    coin() ? model->navigate(selections[pick(selections.size())])
           : model->search(coin() ? "" : "05");
  }
  void regroup() {
    Settings settings = *state().settings;
    switch (pick(4)) {
      case 0:
        settings.gathering.uiMode = static_cast<UIGroupingMode>(pick(4));
        break;
      case 1:
        settings.gathering.granularity = static_cast<UIGranularity>(pick(3));
        break;
      case 2:
        settings.content.includeVideos = !settings.content.includeVideos;
        break;
      default:
        settings.content.skipOptimized = !settings.content.skipOptimized;
    }
    model->changeSettings(settings);
  }
  void layOut() {
    Settings settings = *state().settings;
    settings.layout.separatePhotoVideo = coin();
    settings.layout.onlyNew = coin();
    model->changeSettings(settings);
  }
  void merge() {
    const auto& groups = *state().displayGroups;
    if (groups.size() < 2) return;
    const auto& one = groups[pick(groups.size())]->id;
    coin() ? model->mergeGroups({one, groups[pick(groups.size())]->id}) : model->unmergeGroup(one);
  }
  void press() {
    if (pick(4) == 0) phone.filesUntilUnplugged = static_cast<int>(pick(12));
    if (pick(4) == 0) writesUntilFull = static_cast<int>(pick(12));
    model->startTransfer();
  }
  void answer() { coin() ? model->transferEverything() : model->skipOptimizedAndTransfer(); }
  void cancel() {
    if (pick(4) == 0) model->cancelTransfer();
  }
  void leave() { model->leaveSummary(); }
  void cable() {
    if (pick(4) == 0) {
      phone.isPlugged = false;
      model->sourceGone();
    } else {
      phone.isPlugged = true;
      phone.filesUntilUnplugged = -1;
      plug();
    }
  }
  void disk() { writesUntilFull = pick(4) > 0 ? -1 : static_cast<int>(pick(6)); }
  void shoot() {
    if (phone.assets().size() < 40) phone.addFile(static_cast<int>(phone.assets().size()));
    if (phone.isPlugged) plug();
  }
  /// The user deletes pictures at the destination.
  void lose() {
    for (const auto& [path, content] : filesOnDisk()) {
      if (coin()) std::filesystem::remove(destination / path);
    }
    model->refreshDestination();
  }
  /// An observer that calls the model back now and then.
  void meddle(const StateChange& change) {
    if (!isMeddling_ || pick(40) != 0) return;
    if (change.has(StateTopic::questions)) model->closeOverlay();
    if (change.has(StateTopic::rows)) chooseAll();
    if (change.has(StateTopic::checks)) narrow();
    if (change.has(StateTopic::progress)) cancel();
    if (change.has(StateTopic::phase)) leave();
  }
  /// An observer that keeps the folders by the differences alone.
  void follow(const StateChange& change) {
    EXPECT_EQ(change.before, mirrored_) << "no change is left out";
    EXPECT_FALSE(change.topics.isEmpty());
    EXPECT_GE(change.after.overlay.number, mirrored_.overlay.number);
    mirrored_ = change.after;
  }
  void wait() { loop.advance(std::chrono::seconds{pick(10)}); }

  void check() {
    checkDisk();
    checkShown();
    if (const auto* const done = std::get_if<app_phase::Done>(&state().phase)) {
      checkDone(*done->report);
    }
    if (isTransferring()) return;
    EXPECT_EQ(state().pause, std::nullopt);
  }
  void checkDisk() {
    for (const auto& [path, content] : filesOnDisk()) {
      const std::string name = path.substr(path.rfind('/') + 1);
      EXPECT_EQ(content.size(), 10) << path;
      EXPECT_EQ(content.substr(0, 8), name.substr(0, 8)) << path;
    }
  }
  void checkShown() {
    if (model->isSettled()) {
      const auto excluded = model->excludedKeys();
      for (const auto& group : *state().displayGroups) {
        EXPECT_NE(isIncluded(state(), *group),
                  std::count(excluded.begin(), excluded.end(), group->stableKey) > 0);
      }
    }
    const bool isQuiet = model->isSettled() && transferring.waiting() == 0 && isBrowsing() &&
                         model->library() && !state().displayGroups->empty();
    if (!isQuiet) return;
    const auto folder = openFolder(destination.path());
    const auto view = Destination::read(*folder, phone.source().phone).view;
    const ContinuationContext naming{state().settings, transferOptions(*state().settings, "iPhone"),
                                     "ru_RU"};
    const auto plan =
        TransferPlanner::plan(chosenFolders(continuedFolders(model->library()->rows, naming, view),
                                            state().visibleGroups, *state().checks),
                              naming.options, view);
    EXPECT_EQ(state().newFilesCount, plan.files.size()) << "what is shown is what is planned";
    EXPECT_EQ(state().knownFilesCount, plan.skippedKnown.size());
  }
  void checkDone(const TransferReport& report) {
    if (state().lastRecordID == checked_) return;
    checked_ = state().lastRecordID;
    ++runs_;
    const auto& totals = record().totals;
    EXPECT_EQ(totals.shots, totals.onMac + totals.alreadyThere + totals.failed + totals.optimized +
                                totals.notReached());
    for (const FileOutcome& file : report.files) {
      EXPECT_EQ(file.path.has_value(), !file.is<FileOutcome::Failed>());
    }
    if (record().status != TransferRecord::Status::completed) return;
    EXPECT_EQ(report.files.size(), model->run()->plan->files.size());
    for (const FileOutcome& file : report.files) EXPECT_TRUE(file.path) << file.name;
  }

  std::mt19937 random_;
  bool isMeddling_ = true;
  AppState mirrored_;
  std::vector<AppModel::Subscription> meddlers_;
  AppModel::Subscription mirror_;
  std::optional<Uuid> checked_;
  int runs_ = 0;
};

TEST(AppModelWalk, anythingThatHappens_keepsWhatIsShownAndWhatIsOnDiskTrue) {
  const unsigned walks = std::getenv("TAVRIX_LONG_TESTS") != nullptr ? 10 : 3;
  int runs = 0;
  for (unsigned seed = 1; seed <= walks && !testing::Test::HasFailure(); ++seed) {
    Walk walk{seed};
    for (int i = 0; i < 1000 && !testing::Test::HasFailure(); ++i) {
      SCOPED_TRACE(fmt::format("seed {}, step {}", seed, i));
      walk.step();
    }
    walk.comeToRest();
    runs += walk.runs();
  }
  EXPECT_GT(runs, static_cast<int>(3 * walks)) << "a walk that hardly ever transfers shows nothing";
}

}  // namespace
}  // namespace tavrix
