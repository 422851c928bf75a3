#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "foundation/TimeZone.h"
#include "model/AppState.h"

namespace tavrix::window {

/// The folders as the window lists them: the newest first, those without a date last, in sections
/// by month, or by year if the folders themselves are months.
struct FolderRows {
  struct Section {
    std::optional<int> year;   ///< nullopt for folders without a date
    std::optional<int> month;  ///< 1 to 12; nullopt if the section is a year
    std::size_t count = 0;

    friend bool operator==(const Section&, const Section&) = default;
  };

  std::vector<Shared<DisplayGroup>> folders;
  std::vector<Section> sections;
  bool hasHeaders = false;  ///< false if every folder is a year

  /// Returns the index of the folder with a key.
  std::optional<std::size_t> indexOf(std::uint32_t key) const;
};

/// Returns the visible folders of a state as rows. Days are those of the zone in the settings.
FolderRows folderRowsOf(const AppState& state);

/// Returns true if both list the same folders in the same order and sections. Their content may
/// differ.
bool haveSameFolders(const FolderRows& a, const FolderRows& b);

}  // namespace tavrix::window
