#pragma once

#include <map>
#include <string>

#include "Library.h"
#include "foundation/Sentence.h"

namespace tavrix::cli {

/// How a folder that was merged from others is marked; empty for any other.
std::string mergedNote(Language language, const MediaGroup& group);

/// The groups of a library as they were before merging, by their ids, with the names of the folders
/// that they are in. Refers to the library.
class GroupIndex {
 public:
  struct Entry {
    const MediaGroup* group;
    const std::string* folderName;
  };

  explicit GroupIndex(const Library& library);
  const Entry& at(const std::string& id) const { return entries_.at(id); }

 private:
  std::map<std::string, Entry> entries_;
};

}  // namespace tavrix::cli
