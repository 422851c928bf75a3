#pragma once

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "device/folders/SourceFolder.h"
#include "device/metadata/RangedReader.h"

namespace tavrix {

/// The obstacle that keeps a phone on the cable from providing its files.
enum class PhoneState {
  ready,         ///< no obstacle
  locked,        ///< the user must unlock it
  trustPending,  ///< the user must answer its question whether to trust this computer
  trustDenied,   ///< the answer was no; it asks again when it is plugged in again
  unreachable,   ///< it does not answer as phones do, or is just being unplugged
  silent,        ///< it was asked and did not answer for a long time
};
/// Returns the name of the enumerator.
std::string_view textOf(PhoneState state);

/// A phone on the cable, with as much data as it provides in its state.
struct PhoneOnCable {
  std::string deviceID;  ///< its identifier on the bus; never changes
  PhoneState state = PhoneState::unreachable;
  std::optional<std::string> name;
  std::optional<std::string> serialNumber;
  std::optional<std::string> model;  ///< "iPhone14,5"

  friend bool operator==(const PhoneOnCable&, const PhoneOnCable&) = default;
};

/// The reason why a phone cannot be reached.
class PhoneError : public std::exception {
 public:
  enum class Kind {
    noService,  ///< the system's service that provides phones does not answer
    gone,       ///< the phone is not on the cable, or was unplugged
    locked,
    trustPending,
    trustDenied,
    unreachable,
    silent,   ///< it is on the cable and did not answer for a long time
    stopped,  ///< the caller requested a stop
  };
  explicit PhoneError(Kind kind) : kind_(kind) {}
  Kind kind() const { return kind_; }
  const char* what() const noexcept override { return "PhoneError"; }

 private:
  Kind kind_;
};

/// The files of one phone. Paths begin with "/". Every function throws FileError if the phone
/// refuses the request, and PhoneError if the phone has left (gone), does not answer (silent) or a
/// stop was requested (stopped); after a PhoneError, every call throws one. What a call returns is
/// the phone's whole answer to this call, also if the phone has left since. Must not be used by two
/// threads at once, and must outlive its files.
class PhoneFiles {
 public:
  virtual ~PhoneFiles() = default;
  /// Returns the names of the entries of a folder, sorted.
  virtual std::vector<std::string> names(const std::string& folder) = 0;
  /// Returns the status of a file or folder. `modified` is the date of creation if the phone
  /// reports it. Links are not followed.
  virtual FileStatus status(const std::string& path) = 0;
  /// Opens a file, which the destructor closes. `size` is the size from status(). With
  /// `readsAhead`, a small read also fetches the bytes that follow.
  virtual std::unique_ptr<RangedReader> open(const std::string& path, std::uint64_t size,
                                             bool readsAhead) = 0;
};

/// The phones that the system provides. Safe to call from several threads. Every call ends, even if
/// a phone does not answer for a long time, and ends soon after `stop` is requested.
class PhoneBrowser {
 public:
  virtual ~PhoneBrowser() = default;

  /// Returns the identifiers of the phones on the cable, in the system's order; contacts no phone.
  /// Throws PhoneError (noService, stopped).
  virtual std::vector<std::string> deviceIDs(const std::stop_token& stop) = 0;
  /// Returns the description of a phone. A phone that does not know this computer is asked to trust
  /// it. Throws PhoneError (stopped).
  virtual PhoneOnCable describe(const std::string& deviceID, const std::stop_token& stop) = 0;
  /// Returns the files of the phone with a device identifier; they keep using `stop`. Throws
  /// PhoneError.
  virtual std::unique_ptr<PhoneFiles> openFiles(const std::string& deviceID,
                                                const std::stop_token& stop) = 0;
};

namespace Phones {

/// The longest time that a phone may take for an answer. A connection ends by itself after 10 s of
/// silence; then the phone is gone.
inline constexpr std::chrono::milliseconds patience{8000};

/// Returns the browser for the phones of this machine.
std::unique_ptr<PhoneBrowser> openBrowser(std::chrono::milliseconds patience = Phones::patience);

/// Returns the descriptions of all phones on the cable. Throws PhoneError (noService, stopped).
std::vector<PhoneOnCable> list(PhoneBrowser& browser, const std::stop_token& stop = {});

/// The folder of a phone that contains its pictures.
inline const std::string mediaFolder = "/DCIM";

}  // namespace Phones

}  // namespace tavrix
