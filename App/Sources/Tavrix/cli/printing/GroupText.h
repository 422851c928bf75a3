#pragma once

#include <map>
#include <optional>
#include <string>

#include "foundation/Sentence.h"
#include "library/Library.h"

namespace tavrix::cli {

/// Returns the first and the last day of a group without what they have in common: "2026-05-20",
/// "2026-05-20…22", "2026-04-30…05-02". Returns an empty text for a group without dates.
std::string daysText(const MediaGroup& group, const TimeZone& zone);

/// The groups of a library before merging, by id, with the names of the folders that contain them.
/// Refers to the library.
class GroupIndex {
 public:
  struct Entry {
    const MediaGroup* group;
    const std::string* folderName;
  };

  explicit GroupIndex(const Library& library);
  const Entry& at(const std::string& id) const { return entries_.at(id); }
  bool contains(const std::string& id) const { return entries_.contains(id); }

 private:
  std::map<std::string, Entry> entries_;
};

}  // namespace tavrix::cli
