#pragma once

#include <optional>
#include <string>

#include "foundation/json/JsonReader.h"

namespace tavrix {

/// What went wrong with the file of the user defaults, for one sentence to the person. The program
/// goes on after each.
struct DefaultsFault {
  enum class Kind {
    damaged,     ///< does not read as defaults: none are known until the next change
    setAside,    ///< a damaged file was renamed to `keptAs`, and a new one begun
    unreadable,  ///< the system refuses to read it; it is not written over
    unwritable,  ///< the system refuses to write it: the change counts for this process alone
    busy,        ///< other processes hold it for too long: as above
    tooLarge,    ///< with the change it would be more than can be read back: as above
  };

  Kind kind = Kind::damaged;
  std::string path{};                      ///< of the file
  std::optional<JsonPosition> position{};  ///< of the damage, where there is one
  int code = 0;                            ///< the system's own (errno)
  std::string keptAs{};                    ///< the path of the file set aside

  friend bool operator==(const DefaultsFault&, const DefaultsFault&) = default;
};

/// Whether a change did not get into the file.
inline bool losesChange(const DefaultsFault& fault) {
  return fault.kind != DefaultsFault::Kind::damaged && fault.kind != DefaultsFault::Kind::setAside;
}

}  // namespace tavrix
