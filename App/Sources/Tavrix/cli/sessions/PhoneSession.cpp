#include "cli/sessions/PhoneSession.h"

#include <chrono>

#include "cli/sessions/ReadingReport.h"
#include "cli/sessions/Source.h"
#include "cli/sessions/StoredSettings.h"
#include "device/cable/DeviceWatch.h"
#include "sources/KeptCatalogCounts.h"
#include "text/DeviceText.h"
#include "text/PhoneSentences.h"
#include "text/SentenceParts.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

using Stopped = DeviceState::Stopped;

std::unique_ptr<USBPhonePresence> busOf(const CommandContext& context) {
  const auto& open = context.surroundings.openBus;
  return open ? open() : nullptr;
}

std::unique_ptr<CatalogCounts> countsOf(const CommandContext& context) {
  const Surroundings& surroundings = context.surroundings;
  if (surroundings.defaults == nullptr) return nullptr;
  return std::make_unique<KeptCatalogCounts>(*surroundings.defaults,
                                             isDemo(surroundings.environment));
}

DeviceWatcher::Setup setupOf(ModelSession& session, USBPhonePresence* bus, CatalogCounts* counts) {
  const CommandContext& context = session.context();
  return {.browser = browserOf(context),
          .loop = session.loop(),
          .bus = bus,
          .counts = counts,
          .cacheDirectory = stateFolder(context),
          .zone = context.settings.gathering.timeZone,
          .now = context.surroundings.now,
          .log = &context.log,
          .wanted = wantedNumber(context.call.source())};
}

/// Returns true if nothing continues until the user acts.
bool needsPerson(const DeviceState& state) {
  if (const auto* const connecting = state.as<DeviceState::Connecting>()) {
    return connecting->awaitsTrust;
  }
  if (const auto* const stopped = state.as<Stopped>()) {
    return stopped->reason == Stopped::Reason::phoneLeft;
  }
  return state.is<DeviceState::Waiting>() || state.is<DeviceState::Locked>() ||
         state.is<DeviceState::Failed>();
}

bool isAway(const DeviceState& state) {
  return state.is<DeviceState::Waiting>() || state.is<Stopped>();
}

}  // namespace

PhoneSession::PhoneSession(ModelSession& session)
    : session_(session),
      context_(session.context()),
      counts_(countsOf(context_)),
      bus_(busOf(context_)),
      watcher_(setupOf(session, bus_.get(), counts_.get())),
      subscription_(
          watcher_.subscribe({.stateChanged = [this](const DeviceState& state) { follow(state); },
                              .unseenChanged = [this](bool isUnseen) { tellUnseen(isUnseen); },
                              .othersChanged = [this](const auto&) { tellOtherPhones(); }})),
      followed_({session.model(), watcher_, browserOf(context_), givenDeviceName(context_)}) {}

void PhoneSession::connect(const std::stop_token& stop) {
  watcher_.start();
  session_.runUntil([&] { return watcher_.hasLooked() || stop.stop_requested(); });
  if (watcher_.state().is<DeviceState::Waiting>()) follow(watcher_.state());
  session_.runUntil([&] { return session_.model().hasSource() || stop.stop_requested(); });
  if (!session_.model().hasSource()) failWaiting();
}

void PhoneSession::failWaiting() const {
  const bool isKept = stateFolder(context_).has_value();
  const Sentence<>& reading = isKept ? sentences::readingStopped : sentences::readingStoppedUnkept;
  throw CommandFailure{ExitStatus::cancelled,
                       say(context_.language(), reading_ ? reading : sentences::waitingStopped)};
}

std::string PhoneSession::textOf(const DeviceState& state) const {
  const std::string number = wantedNumber(context_.call.source());
  const Language language = context_.language();
  if (!state.is<DeviceState::Waiting>() || number.empty()) return deviceText(language, state);
  return waitingText(language, say(language, sentences::phoneNotThere, forSentence(number)));
}

void PhoneSession::follow(const DeviceState& state) {
  if (const auto* const reading = state.as<DeviceState::ReadingMetadata>()) {
    return followReading(reading->status);
  }
  bar_.reset();
  if (const auto* const ready = state.as<DeviceState::Ready>()) return followReady(*ready);
  if (!needsPerson(state) || !watcher_.hasLooked()) return;
  const bool isTransferring =
      std::holds_alternative<app_phase::Transferring>(session_.model().state().phase);
  // The run itself reports that the phone left.
  if (isTransferring && isAway(state)) return;
  session_.tell(textOf(state));
  if (reading_) reading_->isLossReported = true;
}

void PhoneSession::tellUnseen(bool isUnseen) const {
  if (!isUnseen) return;
  const Language language = context_.language();
  session_.tell(
      waitingText(language, say(language, sentences::phoneUnseen, unseenPhoneText(language))));
}

void PhoneSession::tellOtherPhones() const {
  const auto& others = watcher_.others();
  const Run* const run = session_.model().run();
  const bool isAwaited = run != nullptr && run->is<run_stage::AwaitingPhone>();
  if (!isAwaited || others.empty()) return;
  session_.tell(say(context_.language(), sentences::otherPhoneCame,
                    forSentence(deviceNameOf(others.back())), forSentence(run->source.deviceName)));
}

void PhoneSession::followReading(const MetadataPass::Progress& progress) {
  if (!reading_) reading_ = Reading{};
  if (wasRead_) return;
  if (!bar_) bar_.emplace(context_.messages);
  bar_->show(progress, std::chrono::steady_clock::now());
}

void PhoneSession::followReady(const DeviceState::Ready& ready) {
  if (reading_ && reading_->isLossReported) {
    session_.tell(say(context_.language(), sentences::phoneIsBack));
  }
  reading_.reset();
  // All of this was reported when the phone was ready for the first time.
  if (std::exchange(wasRead_, true)) return;
  reportOtherPhones(context_, ready.phone, watcher_.others());
  reportReading(context_, *ready.catalogue, ready.phone.deviceID);
  writeRequestedSnapshot(context_, ready.catalogue->items);
}

}  // namespace tavrix::cli
