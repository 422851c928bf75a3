#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ManualHome.h"
#include "SavedPreset.h"
#include "Settings.h"
#include "defaults/UserDefaults.h"

namespace tavrix {

/// Which of a person's choices outlive the program, and how they are kept in the user defaults
/// (docs/defaults.md). The functions of one namespace with one table of keys behind them.
namespace PersistedSettings {

/// The choices that are kept, and the settings that go with them for one launch.
struct Values {
  Settings settings;
  std::vector<SavedPreset> savedPresets;

  friend bool operator==(const Values&, const Values&) = default;
};

/// The key of the saved templates.
inline constexpr std::string_view savedPresetsKey = "savedPresets";

/// The keys of the user defaults that are read and written, in the order in which they are listed.
const std::vector<std::string_view>& keys();

/// The key that a setting (its name in `settingKeys()`) is kept under; nothing for one that every
/// launch begins afresh.
std::optional<std::string_view> keyOf(std::string_view setting);

/// The values with what the defaults hold. An object of a wrong type, a number out of the range
/// that `withSetting` takes, or data that do not decode leave what is there, and nobody is told.
Values read(const UserDefaults& defaults, Values initial);

/// Whether an object is one that read() takes for the key.
bool isTaken(std::string_view key, const JsonValue& object);

/// The object that stands for the values under a key; nothing where the key has to be absent, which
/// is so for a home that is not set. A home's name without a home is not kept.
std::optional<JsonValue> objectOf(std::string_view key, const Values& values);

/// What has to change in the defaults: exactly the keys whose values differ.
DefaultsChanges changes(const Values& before, const Values& after);

/// Writes those changes; in demo mode, where a person's choices stay untouched, none.
void write(UserDefaults& defaults, const Values& before, const Values& after, bool isDemo);

/// The keys that are removed at every launch, so that what they stood for begins afresh: those of
/// conversion and packing always, and outside demo mode those of the destination and of some
/// switches too.
std::vector<std::string_view> forgottenKeys(bool isDemo);
void forgetAtLaunch(UserDefaults& defaults, bool isDemo);

/// The home that the settings hold, and the settings with another one; nothing is the home that is
/// found.
std::optional<ManualHome> manualHome(const Settings& settings);
Settings withManualHome(Settings settings, const std::optional<ManualHome>& home);

}  // namespace PersistedSettings

}  // namespace tavrix
