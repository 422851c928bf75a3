#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/RangedReader.h"
#include "device/SourceFolder.h"

namespace tavrix {

/// What keeps a phone on the cable from handing over its files.
enum class PhoneState {
  ready,         ///< nothing does
  locked,        ///< it is to be unlocked
  trustPending,  ///< its question whether to trust this computer is to be answered
  trustDenied,   ///< the answer was no; it asks again when it is plugged in anew
  unreachable,   ///< it does not answer as phones do, or is on its way off the cable
};
/// The case names.
std::string_view textOf(PhoneState state);

/// A phone on the cable, with as much as it tells in its state.
struct PhoneOnCable {
  std::string deviceID;  ///< what the bus calls it; never changes
  PhoneState state = PhoneState::unreachable;
  std::optional<std::string> name;
  std::optional<std::string> serialNumber;
  std::optional<std::string> model;  ///< "iPhone14,5"

  friend bool operator==(const PhoneOnCable&, const PhoneOnCable&) = default;
};

/// Why there is no way to a phone.
class PhoneError : public std::exception {
 public:
  enum class Kind {
    noService,  ///< the system's service that hands phones over does not answer
    gone,       ///< the phone is not on the cable, or was pulled off it
    locked,
    trustPending,
    trustDenied,
    unreachable,
  };
  explicit PhoneError(Kind kind) : kind_(kind) {}
  Kind kind() const { return kind_; }
  const char* what() const noexcept override { return "PhoneError"; }

 private:
  Kind kind_;
};

/// A file of a phone, open for reading.
class PhoneFile : public RangedReader {
 public:
  /// Asks the phone once more for the place that was read up to. When a phone leaves in the middle
  /// of an answer, the answer may look whole and hold anything: what was read counts only when the
  /// phone has answered a further call. Throws as read() does; EIO when the place is another.
  virtual void confirmPosition(std::uint64_t position) = 0;
  /// Closes the file, which is a further call as well: throws as read() does. A file that is not
  /// closed is closed when it goes.
  virtual void close() = 0;
};

/// The files of one phone. Paths begin with "/". Everything throws FileError for what the phone
/// refuses and PhoneError (gone) when there is no phone any more. Not to be used by two threads at
/// once, and to outlive its files.
class PhoneFiles {
 public:
  virtual ~PhoneFiles() = default;
  /// A call for its answer's sake: throws PhoneError when none comes.
  virtual void confirmPresence() = 0;
  /// What lies directly in a folder, sorted by name; confirmed.
  virtual std::vector<std::string> names(const std::string& folder) = 0;
  /// `modified` is the date of creation, where the phone tells it. Links are not followed.
  virtual FileStatus status(const std::string& path) = 0;
  /// `size` is what status() gave. With `readsAhead`, a small read fetches what follows, too.
  virtual std::unique_ptr<PhoneFile> open(const std::string& path, std::uint64_t size,
                                          bool readsAhead) = 0;
};

/// The phones that the system hands over. Safe to call from several threads.
namespace Phones {

/// Those on the cable, in the order in which the system has them; asks each for what it tells, and
/// one that does not know this computer whether to trust it. Throws PhoneError (noService).
std::vector<PhoneOnCable> list();
/// The files of the phone with a device identifier. Throws PhoneError.
std::unique_ptr<PhoneFiles> openFiles(const std::string& deviceID);

/// The folder with a phone's pictures.
inline const std::string mediaFolder = "/DCIM";

}  // namespace Phones

}  // namespace tavrix
