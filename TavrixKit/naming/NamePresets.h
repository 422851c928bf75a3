#pragma once

#include <string_view>
#include <vector>

#include "naming/NameTemplate.h"

namespace tavrix::NamePresets {

/// A built-in template with its titles.
struct Builtin {
  std::string_view russian;
  std::string_view english;
  NameTemplate nameTemplate;

  friend bool operator==(const Builtin&, const Builtin&) = default;
};

/// Returns the built-in presets in the order in which they are offered. All have language `system`.
const std::vector<Builtin>& builtins();

/// Returns the template that is used until the user picks another one: the first preset, date and
/// city.
const NameTemplate& defaultTemplate();

}  // namespace tavrix::NamePresets
