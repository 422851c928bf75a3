#pragma once

#include <string>

#include "naming/NameTemplate.h"

namespace tavrix {

/// A template that the user has saved under a title.
struct SavedPreset {
  std::string name;
  NameTemplate nameTemplate;

  friend bool operator==(const SavedPreset&, const SavedPreset&) = default;
};

}  // namespace tavrix
