#pragma once

#include <string>
#include <string_view>

#include "device/SourceFolder.h"
#include "foundation/StringMap.h"

namespace tavrix {

/// Where the files of a source lie whose id does not spell their path: the disk's name is no UTF-8,
/// or the id was numbered because another file has it.
class OddPaths {
 public:
  /// Whether an id may be such a file's; any other is the path itself.
  static bool mayConcern(std::string_view id);

  /// `listing` is that of the whole source, as the ids are given in its order.
  explicit OddPaths(const SourceFolder::Listing& listing);
  /// The path of a file below the folder listed.
  std::string pathOf(std::string_view id) const;

 private:
  StringMap<std::string> paths_;
};

}  // namespace tavrix
