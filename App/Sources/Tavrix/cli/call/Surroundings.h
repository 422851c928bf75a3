#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "USBPhonePresence/USBPhonePresence.h"
#include "device/cable/Phones.h"
#include "foundation/Time.h"
#include "foundation/Uuid.h"
#include "foundation/json/JsonWriter.h"
#include "services/Environment.h"

namespace tavrix::cli {

/// All that a command line knows of the world around it; `main` makes the real one, tests their
/// own.
struct Surroundings {
  TextSink& out;  ///< the result alone; may throw OutputClosed and OutputError
  TextSink& err;  ///< progress, log lines, errors
  Environment environment{};
  /// The person's choices; null where there is no place to keep any.
  UserDefaults* defaults = nullptr;
  std::string systemLocaleID = "en_US_POSIX";
  std::string systemTimeZoneID = "UTC";
  /// The table of places; places have no names without one.
  std::optional<std::string> gazetteerPath{};
  /// The program that converts one file when it is started so; nothing is converted without one.
  std::optional<std::string> conversionProgram{};
  /// Columns of the terminal behind `out` and `err`; nothing when that is no terminal.
  std::optional<int> outColumns{};
  std::optional<int> errColumns{};
  std::function<Instant()> now{};
  std::function<Uuid()> newID{};
  /// From this call on an interrupt asks the token to stop instead of ending the program.
  std::function<std::stop_token()> catchInterrupts{};
  /// The phones on the cable; there are none without it.
  PhoneBrowser* phones = nullptr;
  /// Opens the USB bus, on which a phone may be that the system does not hand over; may be missing.
  std::function<std::unique_ptr<USBPhonePresence>()> openBus{};
};

/// Nobody reads the output any more: what is left of it is not worth writing.
class OutputClosed : public std::exception {
 public:
  const char* what() const noexcept override { return "OutputClosed"; }
};

/// The output does not take the result.
class OutputError : public std::exception {
 public:
  explicit OutputError(int code) : code_(code) {}
  /// The system's own code (errno).
  int code() const { return code_; }
  const char* what() const noexcept override { return "OutputError"; }

 private:
  int code_;
};

}  // namespace tavrix::cli
