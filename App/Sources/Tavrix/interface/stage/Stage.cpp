#include "interface/stage/Stage.h"

#include <map>

#include "interface/session/WindowSession.h"

namespace tavrix::window {
namespace {

using Facts = DeviceFacts;
using Event = EventfulFiles::Event;
using Failed = DeviceState::Failed;

constexpr Instant beginning{std::chrono::hours{24 * 20655 + 12}};
constexpr std::chrono::minutes timeOfRun{4};
/// A run is stopped after two in five of its files.
constexpr std::uint64_t shareBefore = 5;

Facts device(DeviceState::Kind state) { return {{std::move(state)}, false, {}}; }

MediaAsset reduced(const MediaAsset& asset) {
  return {asset.id(),        asset.name(),        asset.directory(), asset.kind(),
          asset.sizeBytes(), asset.captureDate(), asset.location(),  true,
          asset.cloudID(),   asset.sha256(),      asset.cameraDate()};
}

Facts failed(Failed::Reason reason) { return device(Failed{reason, "iPhone"}); }

}  // namespace

/// A state of the phones on the cable, or a run in which something happens.
struct Stage::State {
  std::optional<DeviceFacts> device{};
  std::optional<Event> run{};
  bool hasReduced = false;  ///< some pictures are reduced copies

  static const std::map<std::string, State, std::less<>>& all() {
    static const std::map<std::string, State, std::less<>> states{
        {"plain", {}},
        {"locked", {.device = window::device(DeviceState::Locked{"iPhone"})}},
        {"connecting", {.device = window::device(DeviceState::Connecting{"iPhone", false})}},
        {"trust", {.device = window::device(DeviceState::Connecting{"iPhone", true})}},
        {"denied", {.device = failed(Failed::Reason::trustDenied)}},
        {"unseen", {.device = Facts{{DeviceState::Waiting{}}, true, {}}}},
        {"phones",
         {.device = Facts{{DeviceState::Locked{"iPhone"}},
                          false,
                          {{"1", PhoneState::ready, "iPhone 15", {}, {}},
                           {"2", PhoneState::trustPending, "iPad", {}, {}}}}}},
        {"no-service", {.device = failed(Failed::Reason::noService)}},
        {"silent", {.device = failed(Failed::Reason::silent)}},
        {"refused", {.device = failed(Failed::Reason::folderRefused)}},
        {"listing", {.device = window::device(DeviceState::Enumerating{"iPhone", 12'480, 31'206})}},
        {"reading",
         {.device =
              window::device(DeviceState::ReadingMetadata{"iPhone", {31'206, 8'000, 4'311}})}},
        {"stopped",
         {.device = window::device(DeviceState::Stopped{"iPhone", {31'206, 8'000, 4'311}})}},
        {"running", {.run = Event::holds}},
        {"waiting", {.run = Event::leaves}},
        {"reduced", {.run = Event::none, .hasReduced = true}},
        {"clean", {.run = Event::none}},
        {"failures", {.run = Event::fails}}};
    return states;
  }
};

Stage::Stage(const std::string& state) : state_(State::all().at(state)) {}

bool Stage::isKnown(const std::string& state) { return State::all().contains(state); }

Instant Stage::now() const {
  constexpr std::uint64_t bytesPerMillisecond = 100;
  return beginning + std::chrono::milliseconds{*bytes_ / bytesPerMillisecond};
}

MainLoop::Moment Stage::paceMoment() const {
  MainLoop::Moment moment{timeOfRun};
  if (session_ == nullptr || !session_->model().state().progress) return moment;
  const auto& progress = *session_->model().state().progress;
  const double share = static_cast<double>(progress.bytesDone) /
                       static_cast<double>(std::max<std::uint64_t>(1, progress.bytesTotal));
  return moment + std::chrono::round<MainLoop::Duration>(timeOfRun * share);
}

void Stage::plug() {
  AppModel& model = session_->model();
  std::vector<MediaAsset> assets = *model.state().assets;
  if (state_.hasReduced) {
    for (std::size_t i = 0; i < assets.size(); i += 3) assets[i] = reduced(assets[i]);
  }
  model.sourceReady({.deviceName = "iPhone",
                     .phone = model.phone().value(),
                     .assets = std::move(assets),
                     .zone = model.state().settings->gathering.timeZone,
                     .files = files_},
                    data_origin::Device{"iPhone"});
}

void Stage::enter(WindowSession& session) {
  session_ = &session;
  AppModel& model = session.model();
  if (state_.device) model.deviceChanged(*state_.device);
  if (!state_.run) return;
  const std::uint64_t files = model.state().newFilesCount;
  files_ =
      std::make_shared<EventfulFiles>(model.files(), *state_.run, 2 * files / shareBefore, bytes_);
  plug();
  model.setAsksAboutOptimized(state_.hasReduced);
  model.startTransfer();
}

bool Stage::proceed() {
  if (session_ == nullptr) return false;
  if (!state_.run) return true;
  const AppState& state = session_->model().state();
  switch (*state_.run) {
    case Event::holds:
      if (state.pause && !std::exchange(isBack_, true)) plug();
      return files_->isHolding();
    case Event::leaves:
      return state.pause.has_value();
    case Event::none:
    case Event::fails:
      break;
  }
  if (state_.hasReduced) return state.overlay.is<overlay::OptimizedQuestion>();
  return std::holds_alternative<app_phase::Done>(state.phase);
}

}  // namespace tavrix::window
