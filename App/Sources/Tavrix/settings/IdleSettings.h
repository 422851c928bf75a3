#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "naming/FolderNaming.h"
#include "settings/Settings.h"

namespace tavrix {

/// A setting that has no effect, or a part of one, together with the other settings of a call.
struct IdleSetting {
  enum class Reason {
    needsOther,     ///< it has an effect only with `other`
    overruled,      ///< `other` takes its place
    otherModes,     ///< it has values only for modes other than `other`, the mode of the call
    unknownGroups,  ///< no group has the ids `ids`
  };

  std::string_view key;
  Reason reason = Reason::needsOther;
  std::string other{};  ///< "KEY=VALUE", a key alone, or a mode
  std::vector<std::string> ids{};

  friend bool operator==(const IdleSetting&, const IdleSetting&) = default;
};

/// Returns those of the given settings that have no effect on the folders and copies, each once and
/// in the order of settingKeys(). A switch that was given as false is never one of them. `rows` are
/// the folders of the call, after merging.
std::vector<IdleSetting> idleSettings(const Settings& settings,
                                      const std::vector<std::string_view>& givenKeys,
                                      const std::vector<FolderNaming::Row>& rows);

}  // namespace tavrix
