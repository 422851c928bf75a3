#include "interface/options/UnusedSettings.h"

#include "settings/IdleSettings.h"
#include "settings/SettingKeys.h"

namespace tavrix::window {
namespace {

/// Returns the settings with all switches on that have an effect only together with another one.
Settings withDependentsOn(Settings settings) {
  settings.content.liveOnlyPhoto = true;
  settings.gathering.splitByDistance = true;
  settings.gathering.homePeriods = true;
  settings.layout.flattenSingleKind = true;
  settings.layout.packPerGroup = true;
  settings.naming.mergeDistricts = true;
  settings.naming.severalCities = true;
  settings.naming.wholeFolderDates = true;
  return settings;
}

bool isSwitch(std::string_view key) { return settingForm(key) == SettingForm::boolean; }

}  // namespace

std::set<std::string_view> unusedSettings(const Settings& settings) {
  std::set<std::string_view> unused;
  // A switch that is off is never reported as idle, so the switches are tested as if they were on.
  for (const IdleSetting& idle : idleSettings(withDependentsOn(settings), settingKeys(), {})) {
    if (isSwitch(idle.key)) unused.insert(idle.key);
  }
  for (const IdleSetting& idle : idleSettings(settings, settingKeys(), {})) {
    if (!isSwitch(idle.key)) unused.insert(idle.key);
  }
  if (settings.layout.packAsZip) unused.insert("onlyNew");
  return unused;
}

}  // namespace tavrix::window
