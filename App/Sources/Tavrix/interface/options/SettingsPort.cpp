#include "interface/options/SettingsPort.h"

#include <fmt/format.h>

#include "interface/options/UnusedSettings.h"
#include "settings/SettingKeys.h"

namespace tavrix::window {

SettingsPort::SettingsPort(AppModel& model, const Words& words, std::string systemLocaleID)
    : model_(model), words_(words), systemLocaleID_(std::move(systemLocaleID)) {
  update();
}

JsonValue SettingsPort::value(std::string_view key) const { return *settingValue(now(), key); }

JsonValue SettingsPort::initialValue(std::string_view key) {
  return *settingValue(Settings{}, key);
}

void SettingsPort::set(std::string_view key, std::string_view text) {
  auto changed = withSetting(now(), fmt::format("{}={}", key, text));
  if (auto* const settings = std::get_if<Settings>(&changed)) {
    model_.changeSettings(std::move(*settings));
  }
}

void SettingsPort::update() { unused_ = unusedSettings(now()); }

}  // namespace tavrix::window
