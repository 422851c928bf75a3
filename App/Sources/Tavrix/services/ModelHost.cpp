#include "services/ModelHost.h"

namespace tavrix {

ModelHost::ModelHost(const std::optional<std::string>& conversionProgram) {
  if (conversionProgram) converter_.emplace(*conversionProgram);
}

ModelServices ModelHost::services(MainLoop& loop, std::function<Instant()> now,
                                  std::function<Uuid()> newID) {
  ModelServices services{
      .loop = loop,
      .background = [this](std::function<void()> work) { background_.post(std::move(work)); },
      .transferring = [this](std::function<void()> work) { transferring_.post(std::move(work)); },
      .looking = [this](std::function<void()> work) { looking_.post(std::move(work)); },
      .now = std::move(now),
      .newID = std::move(newID)};
  services.converter = converter_ ? &*converter_ : nullptr;
  return services;
}

}  // namespace tavrix
