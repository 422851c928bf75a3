#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "USBPhonePresence/USBPhonePresence.h"
#include "device/cable/Phones.h"
#include "foundation/Time.h"
#include "foundation/Uuid.h"
#include "foundation/json/JsonWriter.h"
#include "services/Environment.h"
#include "services/SleepInhibitor.h"

namespace tavrix::cli {

/// Everything outside the program that a command line uses. `main` passes the real surroundings,
/// tests pass their own.
struct Surroundings {
  TextSink& out;  ///< only the result; may throw OutputClosed and OutputError
  TextSink& err;  ///< progress, log lines, errors
  Environment environment{};
  /// The saved settings of the user; null if there is no place to keep them.
  UserDefaults* defaults = nullptr;
  std::string systemLocaleID = "en_US_POSIX";  ///< for dates and places in names
  std::string messagesLocaleID = "ru_RU";      ///< for messages
  std::string systemTimeZoneID = "UTC";
  /// The path of the table of places; without it, places have no names.
  std::optional<std::string> gazetteerPath{};
  /// The path of the program that converts one file each time it is started; without it, nothing is
  /// converted.
  std::optional<std::string> conversionProgram{};
  /// The columns of the terminal behind `out` and `err`; nullopt if it is not a terminal.
  std::optional<int> outColumns{};
  std::optional<int> errColumns{};
  std::function<Instant()> now{};
  std::function<Uuid()> newID{};
  /// After the first call, an interrupt requests a stop through the token instead of ending the
  /// program.
  std::function<std::stop_token()> catchInterrupts{};
  /// The phones on the cable; if null, there are none.
  PhoneBrowser* phones = nullptr;
  /// Opens the USB bus, which also shows phones that the system does not hand over. May be empty.
  std::function<std::unique_ptr<USBPhonePresence>()> openBus{};
  /// Keeps the computer awake while files are read and copied. May be null.
  SleepInhibitor* sleep = nullptr;
  std::string windowProgram = "tavrix-window";  ///< the path of the window
  /// Returns true if the path is a program that can be started. May be empty.
  std::function<bool(const std::string& program)> canStart{};
  /// Replaces this process by another program. Returns the error code (errno) if that fails.
  std::function<int(const std::string& program, const std::vector<std::string>& arguments)>
      become{};
};

/// The reader of the output has closed it, so the rest need not be written.
class OutputClosed : public std::exception {
 public:
  const char* what() const noexcept override { return "OutputClosed"; }
};

/// The result could not be written to the output.
class OutputError : public std::exception {
 public:
  explicit OutputError(int code) : code_(code) {}
  /// Returns the error code of the system (errno).
  int code() const { return code_; }
  const char* what() const noexcept override { return "OutputError"; }

 private:
  int code_;
};

}  // namespace tavrix::cli
