#pragma once

#include <string_view>
#include <vector>

#include "naming/NameTemplate.h"

namespace tavrix::NamePresets {

/// A template that comes with the program, with its titles.
struct Builtin {
  std::string_view russian;
  std::string_view english;
  NameTemplate nameTemplate;

  friend bool operator==(const Builtin&, const Builtin&) = default;
};

/// The built-in presets in the order in which they are offered; all of language `system`.
const std::vector<Builtin>& builtins();

/// The template used until a person picks another: the first preset, date and city.
const NameTemplate& defaultTemplate();

}  // namespace tavrix::NamePresets
