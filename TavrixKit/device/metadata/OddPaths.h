#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/StringMap.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// Where the files of a catalogue lie whose id does not spell their path: the disk's name is no
/// UTF-8, or the id was numbered because another file has it.
class OddPaths {
 public:
  OddPaths() = default;
  /// The items of a catalogue in their order, by which ids are numbered, and the path of each.
  OddPaths(const std::vector<SnapshotItem>& items, const std::vector<std::string>& paths);

  /// Whether a name or folder is not as the disk spells it, or may not be.
  static bool isReplaced(const SnapshotItem& item);
  /// The path of a file of the catalogue; any other id is taken for a path.
  std::string pathOf(std::string_view id) const;

  friend bool operator==(const OddPaths&, const OddPaths&) = default;

 private:
  StringMap<std::string> paths_;
};

}  // namespace tavrix
