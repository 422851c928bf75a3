// The part of the model that looks at the destination.

#include <utility>

#include "model/AppModel.h"

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
  if (isAnother) publishDestination(destination_state::Unknown{});
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
                             shown = destination_, isOwn,
                             open = services_.openExisting]() -> CoalescedWork::Apply {
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
    } catch (const std::exception&) {
      look->state = destination_state::Refused{std::current_exception()};
    }
    return [this, life, look] {
      if (life.lock()) landDestination(*look);
    };
  });
  publishActivity();
}

void AppModel::landDestination(DestinationLook& look) {
  publishDestination(std::move(look.state));
  if (look.content == destination_) return settled();
  services_.background([old = std::exchange(destination_, std::move(look.content))] {});
  requestDisplay();
  publishActivity();
}

}  // namespace tavrix
