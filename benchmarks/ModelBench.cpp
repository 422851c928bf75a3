// The application model with a large library: the time from a settings change to the new display,
// against grouping the same shots alone, and the longest time that the main loop is blocked
// meanwhile.

#include <fmt/format.h>

#include <algorithm>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "foundation/tasks/SerialQueue.h"
#include "grouping/GroupingEngine.h"
#include "media/BundleBuilder.h"
#include "model/AppModel.h"

namespace tavrix::bench {
namespace {

/// A loop that records its longest task.
class TimedLoop : public MainLoop {
 public:
  void postAfter(Duration delay, Task task) override {
    loop_.postAfter(
        delay, [this, task = std::move(task)] { longest_ = std::max(longest_, seconds(task)); });
  }
  Moment now() const override { return loop_.now(); }
  void runUntil(const std::function<bool()>& isDone) { loop_.runUntil(isDone); }

  /// Returns the longest task since the last call, in seconds.
  double takeLongest() { return std::exchange(longest_, 0); }

 private:
  StandardMainLoop loop_;
  double longest_ = 0;
};

/// A source whose files are never opened.
class NoFiles : public SourceFiles {
 public:
  std::unique_ptr<MediaSource> openMedia(AwaitPhone, std::stop_token) const override {
    return nullptr;
  }
};

/// A model with a phone.
class Launched {
 public:
  explicit Launched(std::vector<MediaAsset> assets) {
    model_.sourceReady({.deviceName = "iPhone",
                        .phone = snapshotPhone("iPhone"),
                        .assets = std::move(assets),
                        .files = std::make_shared<NoFiles>()},
                       data_origin::Device{"iPhone"});
    settle();
    loop_.takeLongest();
  }

  const Settings& settings() const { return *model_.state().settings; }
  double longestTask() { return loop_.takeLongest(); }
  std::size_t folders() const { return model_.state().displayGroups->size(); }
  /// Returns the seconds from the change until the display shows its result. The change itself is
  /// one more task.
  double change(const std::function<void(Settings&)>& edit) {
    Settings changed = settings();
    edit(changed);
    return seconds([&] {
      loop_.post([&] { model_.changeSettings(std::move(changed)); });
      bool hasChanged = false;
      loop_.post([&] { hasChanged = true; });
      loop_.runUntil([&] { return hasChanged && model_.isSettled(); });
    });
  }
  void search(const std::string& text) {
    loop_.post([this, text] { model_.search(text); });
    bool hasChanged = false;
    loop_.post([&] { hasChanged = true; });
    loop_.runUntil([&] { return hasChanged && model_.isSettled(); });
  }

 private:
  void settle() {
    loop_.runUntil([this] { return model_.isSettled(); });
  }

  TimedLoop loop_;
  SerialQueue background_;
  SerialQueue transferring_;
  AppModel model_{
      {.loop = loop_,
       .background = [this](std::function<void()> work) { background_.post(std::move(work)); },
       .transferring = [this](std::function<void()> work) { transferring_.post(std::move(work)); },
       .now = [] { return Instant{}; },
       .newID = randomUuid},
      Settings{}};
};

void benchLibrary(std::size_t shots) {
  const auto assets = travels({.shots = shots, .events = shots / 50, .trips = 300, .places = 2000});
  GroupingEngine::Request request;
  request.bundles = BundleBuilder::makeBundles(assets);
  request.mode = grouping_mode::Events{};
  const double grouping = seconds([&] { GroupingEngine::group(request); });

  Launched launched{assets};
  double ours = 1e9;
  double longest = 0;
  for (const double hours : {6.0, 4.0, 5.0}) {
    ours = std::min(ours, launched.change([&](Settings& s) { s.gathering.eventGapHours = hours; }));
    longest = std::max(longest, launched.longestTask());
  }
  print({fmt::format("setting to display, {} events of {} shots : grouping alone",
                     launched.folders(), shots),
         time(ours), time(grouping), ours / grouping, 10});
  constexpr double allowed = 0.008;
  print({fmt::format("longest task of the main loop meanwhile, {} shots : 8 ms", shots),
         time(longest), time(allowed), longest / allowed, 1});
  const double searching = seconds([&] { launched.search("2015"); });
  print({fmt::format("search to display, {} shots : grouping alone", shots), time(searching),
         time(grouping), searching / grouping, 2});
  longest = launched.longestTask();
  print({fmt::format("longest task of the main loop meanwhile, {} shots : 8 ms", shots),
         time(longest), time(allowed), longest / allowed, 1});
}

}  // namespace

void benchModel() {
  benchLibrary(100'000);
  benchLibrary(1'000'000);
}

}  // namespace tavrix::bench
