#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/ManualHome.h"
#include "settings/SavedPreset.h"
#include "settings/Settings.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// Keeps the user's persistent choices in the user defaults (docs/defaults.md). All functions share
/// one table of keys.
namespace PersistedSettings {

/// The persistent choices, together with the settings that last for one launch only.
struct Values {
  Settings settings;
  std::vector<SavedPreset> savedPresets;

  friend bool operator==(const Values&, const Values&) = default;
};

/// The key of the saved templates.
inline constexpr std::string_view savedPresetsKey = "savedPresets";

/// Returns the keys of the user defaults that are read and written, in the order in which they are
/// listed.
const std::vector<std::string_view>& keys();

/// Returns the key under which a setting (its name in `settingKeys()`) is stored. Returns nullopt
/// if the setting is reset at every launch.
std::optional<std::string_view> keyOf(std::string_view setting);

/// Returns the values updated from the defaults. Skips, without a message, an object of the wrong
/// type, a number that withSetting() would reject (below 0, a count beyond 10000, coordinates
/// beyond ±90° or ±180°) and data that cannot be decoded; the initial value then stays. The
/// fraction of a count is ignored.
Values read(const UserDefaults& defaults, Values initial);

/// An object of the defaults that read() skips.
struct SkippedObject {
  std::string_view key;
  std::string_view setting;  ///< the setting that is stored under the key; empty if there is none
  JsonValue object;

  friend bool operator==(const SkippedObject&, const SkippedObject&) = default;
};
/// Returns the objects that read() skips, in the order of keys().
std::vector<SkippedObject> skipped(const UserDefaults& defaults);

/// Returns true if read() accepts the object for the key.
bool isTaken(std::string_view key, const JsonValue& object);

/// Returns the object to store under a key. Returns nullopt if the key must be absent, as it must
/// when no home is set. The name of a home is not stored without the home.
std::optional<JsonValue> objectOf(std::string_view key, const Values& values);

/// Returns the changes to make in the defaults: exactly the keys whose values differ.
DefaultsChanges changes(const Values& before, const Values& after);

/// Writes changes(). In demo mode the user's choices stay untouched, so it writes nothing.
void write(UserDefaults& defaults, const Values& before, const Values& after, bool isDemo);

/// Returns the keys that are removed at every launch, which resets their choices. The keys of
/// conversion and packing are always removed; outside demo mode those of the destination and of
/// some switches are removed as well.
std::vector<std::string_view> forgottenKeys(bool isDemo);
void forgetAtLaunch(UserDefaults& defaults, bool isDemo);

/// Return the home in the settings, and the settings with another home. Without a value the home is
/// detected.
std::optional<ManualHome> manualHome(const Settings& settings);
Settings withManualHome(Settings settings, const std::optional<ManualHome>& home);

}  // namespace PersistedSettings

}  // namespace tavrix
