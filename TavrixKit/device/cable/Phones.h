#pragma once

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
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
  silent,        ///< it was asked, and no answer came for long
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
    silent,   ///< it is on the cable and did not answer for long
    stopped,  ///< whoever asked wants no answer any more
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
/// refuses and PhoneError when there is no phone any more (gone), it does not answer (silent) or
/// the asking was stopped (stopped). Not to be used by two threads at once, and to outlive its
/// files.
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

/// The phones that the system hands over. Safe to call from several threads. Every call ends: when
/// a phone does not answer for long, and soon after `stop` is asked for.
class PhoneBrowser {
 public:
  virtual ~PhoneBrowser() = default;

  /// Those on the cable, in the order in which the system has them; no phone is asked. Throws
  /// PhoneError (noService, stopped).
  virtual std::vector<std::string> deviceIDs(const std::stop_token& stop) = 0;
  /// What a phone tells; one that does not know this computer is asked whether to trust it. Throws
  /// PhoneError (stopped).
  virtual PhoneOnCable describe(const std::string& deviceID, const std::stop_token& stop) = 0;
  /// The files of the phone with a device identifier; they keep the token. Throws PhoneError.
  virtual std::unique_ptr<PhoneFiles> openFiles(const std::string& deviceID,
                                                const std::stop_token& stop) = 0;
};

namespace Phones {

/// How long a phone may take for an answer. The library behind gives up after 10 s by itself, and
/// then says that the phone is gone.
inline constexpr std::chrono::milliseconds patience{8000};

/// The phones of this machine.
std::unique_ptr<PhoneBrowser> openBrowser(std::chrono::milliseconds patience = Phones::patience);

/// All on the cable with what they tell. Throws PhoneError (noService, stopped).
std::vector<PhoneOnCable> list(PhoneBrowser& browser, const std::stop_token& stop = {});

/// The folder with a phone's pictures.
inline const std::string mediaFolder = "/DCIM";

}  // namespace Phones

}  // namespace tavrix
