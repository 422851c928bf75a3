#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/StringMap.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// The paths of those files of a catalogue whose id does not spell their path: the name on the disk
/// is not UTF-8, or the id was numbered because another file has the same id.
class OddPaths {
 public:
  OddPaths() = default;
  /// `items` are the items of a catalogue in their order, which decides how ids are numbered.
  /// `paths` are the paths of the same items.
  OddPaths(const std::vector<SnapshotItem>& items, const std::vector<std::string>& paths);

  /// Returns true if the name or folder of an item differs, or may differ, from its spelling on the
  /// disk.
  static bool isReplaced(const SnapshotItem& item);
  /// Returns the path of a file of the catalogue. An id that is not stored here is itself the path.
  std::string pathOf(std::string_view id) const;

  friend bool operator==(const OddPaths&, const OddPaths&) = default;

 private:
  StringMap<std::string> paths_;
};

}  // namespace tavrix
