#pragma once

#include <optional>
#include <string>

#include "foundation/json/JsonReader.h"

namespace tavrix {

/// A fault of the defaults file, to be reported in one sentence to the user. The program continues
/// after any of them.
struct DefaultsFault {
  enum class Kind {
    damaged,     ///< cannot be parsed: no values are known until the next change
    setAside,    ///< a damaged file was renamed to `keptAs`, and a new one started
    unreadable,  ///< the system refuses to read it; it is not overwritten
    notFile,     ///< it is a folder, a link to a folder, or a link that leads back to itself
    unwritable,  ///< the system refuses to write it: only this process has the change
    busy,        ///< other processes lock it for too long: same effect
    tooLarge,    ///< with the change it would be too large to read back: same effect
  };

  Kind kind = Kind::damaged;
  std::string path{};                      ///< the path of the file
  std::optional<JsonPosition> position{};  ///< where the damage is, if known
  int code = 0;                            ///< the error code of the system (errno)
  std::string keptAs{};                    ///< the path to which the damaged file was renamed
  /// For `notFile`: the folder to which the link leads; empty if it is no link or leads nowhere.
  std::string target{};

  friend bool operator==(const DefaultsFault&, const DefaultsFault&) = default;
};

/// Returns true if a change was not written to the file.
inline bool losesChange(const DefaultsFault& fault) {
  return fault.kind != DefaultsFault::Kind::damaged && fault.kind != DefaultsFault::Kind::setAside;
}

}  // namespace tavrix
