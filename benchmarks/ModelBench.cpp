// The application model with a large library: the time from a choice to its display, the longest
// time for which a task blocks the main loop, and how busy the loop is during a run.

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <span>
#include <thread>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "foundation/tasks/SerialQueue.h"
#include "grouping/GroupingEngine.h"
#include "media/BundleBuilder.h"
#include "model/AppModel.h"
#include "model/FolderListDifference.h"

namespace tavrix::bench {
namespace {

/// A loop that records its longest task and the time of all tasks.
class TimedLoop : public MainLoop {
 public:
  void postAfter(Duration delay, Task task) override {
    // Destroying what the task holds is part of the task.
    loop_.postAfter(delay, [this, task = std::move(task)]() mutable {
      const double duration = seconds([&] {
        task();
        task = nullptr;
      });
      longest_ = std::max(longest_, duration);
      busy_ += duration;
    });
  }
  Moment now() const override { return loop_.now(); }
  void runUntil(const std::function<bool()>& isDone) { loop_.runUntil(isDone); }

  /// Returns the longest task since the last call, in seconds.
  double takeLongest() { return std::exchange(longest_, 0); }
  /// Returns the time of all tasks since the last call, in seconds.
  double takeBusy() { return std::exchange(busy_, 0); }

 private:
  StandardMainLoop loop_;
  double longest_ = 0;
  double busy_ = 0;
};

/// A source that delivers files of the letter "x" as fast as it can, or waits for a stop instead.
class Letters : public SourceFiles {
 public:
  explicit Letters(bool delivers) : delivers_(delivers) {}

  std::unique_ptr<MediaSource> openMedia(AwaitPhone, std::stop_token stop) const override {
    return std::make_unique<Media>(delivers_, std::move(stop));
  }

 private:
  struct Media : MediaSource {
    Media(bool deliversAtOnce, std::stop_token stopToken)
        : delivers(deliversAtOnce), stop(std::move(stopToken)) {}
    void download(const MediaAsset& asset, DownloadDestination& destination) override {
      while (!delivers && !stop.stop_requested()) {
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
      }
      const std::string content(asset.sizeBytes() % 100'000, 'x');
      destination.append(std::as_bytes(std::span{content}));
    }
    bool delivers;
    std::stop_token stop;
  };
  bool delivers_;
};

/// A model with a phone and a destination, and with an observer that follows the folders as a
/// window does.
class Launched {
 public:
  Launched(std::vector<MediaAsset> assets, bool delivers, const std::string& destination)
      : destination_(destination) {
    std::filesystem::create_directories(destination);
    model_.setDestination(destination);
    model_.sourceReady({.deviceName = "iPhone",
                        .phone = snapshotPhone("iPhone"),
                        .assets = std::move(assets),
                        .files = std::make_shared<Letters>(delivers)},
                       data_origin::Device{"iPhone"});
    settle();
    takeLongest();
  }

  const AppState& state() const { return model_.state(); }
  double takeLongest() { return loop_.takeLongest(); }
  double takeBusy() { return loop_.takeBusy(); }
  std::size_t progressChanges() const { return progressChanges_; }
  std::size_t folders() const { return state().displayGroups->size(); }

  /// Returns the seconds from the call, which is one more task, until `isReached()` returns true.
  double reach(const std::function<void(AppModel&)>& call, const std::function<bool()>& isReached) {
    return seconds([&] {
      bool isCalled = false;
      loop_.post([&] { call(model_); });
      loop_.post([&] { isCalled = true; });
      loop_.runUntil([&] { return isCalled && isReached(); });
    });
  }
  double settled(const std::function<void(AppModel&)>& call) {
    return reach(call, [this] { return model_.isSettled(); });
  }
  double change(const std::function<void(Settings&)>& edit) {
    Settings changed = *state().settings;
    edit(changed);
    return settled([&](AppModel& model) { model.changeSettings(std::move(changed)); });
  }
  bool isTransferring() const {
    return std::holds_alternative<app_phase::Transferring>(state().phase);
  }
  bool isDone() const { return std::holds_alternative<app_phase::Done>(state().phase); }

 private:
  void settle() {
    loop_.runUntil([this] { return model_.isSettled(); });
  }
  void observe(const StateChange& change) {
    if (change.has(StateTopic::progress)) ++progressChanges_;
    if (!change.has(StateTopic::rows)) return;
    steps_ += differenceOf(change.before.visibleGroups, change.after.visibleGroups).changed.size();
  }

  std::string destination_;
  TimedLoop loop_;
  SerialQueue background_;
  SerialQueue transferring_;
  SerialQueue looking_;
  AppModel model_{
      {.loop = loop_,
       .background = [this](std::function<void()> work) { background_.post(std::move(work)); },
       .transferring = [this](std::function<void()> work) { transferring_.post(std::move(work)); },
       .looking = [this](std::function<void()> work) { looking_.post(std::move(work)); },
       .now = [] { return Instant{}; },
       .newID = randomUuid,
       .keepRecord = [](const TransferRecord&) { return true; }},
      Settings{}};
  std::size_t progressChanges_ = 0;
  std::size_t steps_ = 0;
  AppModel::Subscription subscription_ =
      model_.subscribe([this](const StateChange& change) { observe(change); });
};

constexpr double longestAllowed = 0.004;

void printTime(const std::string& what, double ours, double allowed) {
  print(
      {fmt::format("{} : {}", what, time(allowed)), time(ours), time(allowed), ours / allowed, 1});
}

void printLongest(const std::string& what, Launched& launched) {
  printTime("longest task of the loop, " + what, launched.takeLongest(), longestAllowed);
}

void benchChanges(Launched& launched, const std::vector<MediaAsset>& assets) {
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(assets);
  request.mode = grouping_mode::Events{};
  const double grouping = seconds([&] { GroupingEngine::group(request); });
  double ours = 1e9;
  for (const double hours : {6.0, 4.0, 5.0}) {
    ours = std::min(ours, launched.change([&](Settings& s) { s.gathering.eventGapHours = hours; }));
  }
  print({"setting to display : grouping alone", time(ours), time(grouping), ours / grouping, 10});
  printLongest("setting", launched);
  const double searching = launched.settled([](AppModel& model) { model.search("2015"); });
  print({"search to display : grouping alone", time(searching), time(grouping),
         searching / grouping, 2});
  launched.settled([](AppModel& model) { model.search(""); });
  printLongest("search", launched);
}

void benchChecks(Launched& launched) {
  const auto& groups = *launched.state().displayGroups;
  const auto before = launched.state().newFilesCount;
  const auto toggle = [&](AppModel& model) { model.toggleGroup(groups[7]->stableKey); };
  printTime("toggle to counters by folder",
            launched.reach(toggle, [&] { return launched.state().newFilesCount != before; }),
            0.016);
  printTime("toggle to the exact plan", launched.settled(toggle), 0.1);
  printLongest("toggle", launched);
  launched.settled([](AppModel& model) { model.includeNone(); });
  launched.settled([](AppModel& model) { model.includeAll(); });
  printLongest("none and all", launched);
  launched.settled([](AppModel& model) { model.refreshDestination(); });
  printLongest("destination looked at again", launched);
}

void benchStart(Launched& launched) {
  launched.reach([](AppModel& model) { model.startTransfer(); },
                 [&] { return launched.isTransferring(); });
  launched.reach([](AppModel& model) { model.cancelTransfer(); },
                 [&] { return launched.isDone(); });
  launched.settled([](AppModel& model) { model.leaveSummary(); });
  printLongest("start and cancel of a run", launched);
}

void benchLibrary(std::size_t shots, const std::string& destination) {
  const auto assets = travels({.shots = shots, .events = shots / 50, .trips = 300, .places = 2000});
  Launched launched{assets, false, destination};
  fmt::print("{} shots in {} folders:\n", shots, launched.folders());
  benchChanges(launched, assets);
  benchChecks(launched);
  benchStart(launched);
}

/// A run of many small files, so that progress is reported as often as it can be.
void benchProgress(const std::string& destination) {
  constexpr std::size_t files = 20'000;
  std::vector<MediaAsset> assets;
  for (std::size_t i = 0; i < files; ++i) {
    const std::string name = fmt::format("IMG_{:05}.HEIC", i);
    const Instant date{std::chrono::seconds{1779278400 + 600 * static_cast<std::int64_t>(i)}};
    assets.emplace_back(name, name, std::nullopt, MediaKind::photo, 1000U, date, std::nullopt,
                        false, std::nullopt, std::nullopt);
  }
  Launched launched{std::move(assets), true, destination};
  launched.takeBusy();
  const auto changes = launched.progressChanges();
  const double wall = launched.reach([](AppModel& model) { model.startTransfer(); },
                                     [&] { return launched.isDone(); });
  const double busy = launched.takeBusy();
  print({fmt::format("run of {} files: time of the loop : 1 % of the run", files), time(busy),
         time(wall / 100), busy / (wall / 100), 1});
  // The first change is shown at the beginning, the others after an interval each.
  const double perSecond = static_cast<double>(launched.progressChanges() - changes - 1) / wall;
  print({"run: progress shown a second : 20", fmt::format("{:.1f}", perSecond), "20",
         perSecond / 20, 1});
  printLongest("run", launched);
}

}  // namespace

void benchModel(const std::string& folder) {
  benchLibrary(100'000, folder + "/100k");
  benchLibrary(1'000'000, folder + "/1M");
  benchProgress(folder + "/progress");
}

}  // namespace tavrix::bench
