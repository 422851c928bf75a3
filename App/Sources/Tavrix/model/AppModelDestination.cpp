// The part of the model that looks at the destination.

#include <utility>

#include "model/AppModel.h"
#include "settings/FolderMaking.h"

namespace tavrix {

/// The result of reading the destination.
struct AppModel::DestinationLook {
  std::shared_ptr<const Destination::Content> content;  ///< nullptr if there is nothing to read
  DestinationState state;
};

void AppModel::setDestination(std::optional<std::string> destination) {
  const auto* const blocker = state_->overlay.as<overlay::Blocker>();
  if (blocker != nullptr && blocker->kind == TransferBlocker::noDestination) closeOverlay();
  const bool isAnother = destination != state_->destination;
  state_.change([&](AppState& state) { state.destination = std::move(destination); });
  if (isAnother) {
    state_.change([](AppState& state) { state.findings = {}; });
    publishDestination(destination_state::Unknown{});
  }
  refreshDestination();
}

void AppModel::publishDestination(DestinationState destination) {
  if (destination == state_->destinationState) return;
  state_.change([&](AppState& state) { state.destinationState = std::move(destination); });
}

void AppModel::refreshDestination() {
  if (!services_.showsFolders) return;
  const bool isUnknown =
      std::holds_alternative<destination_state::Unknown>(state_->destinationState);
  if (state_->destination && isUnknown) publishDestination(destination_state::Reading{});
  // This model's own run, or its preparation, does not make the folder busy.
  const bool isRunning = std::holds_alternative<app_phase::Transferring>(state_->phase) &&
                         state_->destination == run_->now().destination;
  const bool isOwn = isRunning || std::holds_alternative<Preparing>(start_);
  const PhoneIdentity phone = source() != nullptr ? source()->phone : PhoneIdentity{};
  destinationIndex_.request([this, life = std::weak_ptr{life_}, path = state_->destination, phone,
                             shown = destination_, isOwn, looksAhead = services_.looksAhead,
                             files = source() != nullptr ? source()->files : nullptr,
                             open = services_.destinations.openExisting]() -> CoalescedWork::Apply {
    auto look = std::make_shared<DestinationLook>();
    try {
      const auto folder = path ? open(*path) : nullptr;
      if (path) look->state = destination_state::Missing{};
      if (folder) {
        auto content =
            std::make_shared<const Destination::Content>(Destination::read(*folder, phone));
        // An unchanged content stays the same object, so that plans made from it stay valid.
        look->content = shown && *shown == *content ? shown : std::move(content);
        look->state = destination_state::Ready{folder->freeBytes()};
        if (!isOwn && !folder->lock()) look->state = destination_state::Busy{folder->freeBytes()};
      }
      if (path && looksAhead && !isOwn) checkUsable(*path, files.get());
    } catch (const std::exception&) {
      look->state = destination_state::Refused{std::current_exception()};
    }
    return [this, life, look] {
      if (life.lock()) landDestination(*look);
    };
  });
  publishActivity();
}

void AppModel::checkUsable(const std::string& path, const SourceFiles* files) {
  if (files != nullptr) files->checkDestination(path);
  Destination::checkWritable(path);
}

void AppModel::landDestination(DestinationLook& look) {
  publishDestination(std::move(look.state));
  if (look.content == destination_) return settled();
  services_.background([old = std::exchange(destination_, std::move(look.content))] {});
  requestDisplay();
  publishActivity();
}

void AppModel::requestFindings() {
  if (!services_.looksAhead) return;
  if (!state_->destination || !planned_.plan || !planned_.destination || source() == nullptr) {
    return state_.change([](AppState& state) { state.findings = {}; });
  }
  const auto zone = state_->settings->gathering.timeZone;
  const auto packing =
      packingOf(*state_->settings, source()->deviceName, zone.dateAt(services_.now()));
  findings_.request([this, life = std::weak_ptr{life_}, planned = planned_, packing,
                     path = *state_->destination, visible = state_->visibleGroups,
                     checks = state_->checks, phone = source()->phone, isCard = source()->isCard,
                     localeID = services_.systemLocaleID,
                     open = services_.destinations.openExisting]() -> CoalescedWork::Apply {
    Shared<DestinationFindings> findings;
    try {
      const auto folder = open(path);
      const auto chosen = chosenFolders(*planned.folders, visible, *checks);
      const bool isAll = chosen.size() == planned.folders->size();
      const TransferPlan part = isAll ? TransferPlan{} : partOf(*planned.plan, chosen);
      if (folder) {
        findings = findingsOf(isAll ? *planned.plan : part, packing,
                              folderMaking(*planned.settings, localeID), *folder,
                              *planned.destination, phone, isCard);
      }
    } catch (const std::exception&) {
      // The state of the destination says why it cannot be read.
      findings = {};
    }
    return [this, life, findings] {
      if (!life.lock()) return;
      state_.change([&](AppState& state) { state.findings = findings; });
    };
  });
}

}  // namespace tavrix
