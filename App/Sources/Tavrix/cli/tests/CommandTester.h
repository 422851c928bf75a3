#pragma once

#include <gmock/gmock.h>
#include <sys/fsuid.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include "cli/CommandLine.h"
#include "cli/sessions/StoredSettings.h"
#include "foundation/json/JsonValue.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix::cli {

/// The result of a command.
struct CommandResult {
  ExitStatus status;
  std::string out;
  std::string err;

  /// Returns the output parsed as JSON. Throws if it is not JSON.
  JsonValue json() const { return parseJson(out); }
};

/// Runs command lines in an isolated environment.
struct CommandTester {
  TemporaryFolder folder;
  Environment environment{};
  std::string localeID = "en_US";
  std::string messagesLocaleID = "ru_RU";
  std::optional<std::string> gazetteerPath{};      ///< without it, places have no names
  std::optional<std::string> conversionProgram{};  ///< without it, nothing is converted
  std::optional<int> outColumns{};
  std::optional<int> errColumns{};
  Instant time{std::chrono::seconds{1779364800}};  // 2026-05-21T12:00:00Z
  bool isInterrupted = false;                      ///< interrupt as soon as a run begins
  PhoneBrowser* phones = nullptr;                  ///< nullptr: no phones
  bool isWindowInstalled = true;
  int windowFault = 0;                                 ///< why the window cannot be started (errno)
  mutable std::vector<std::string> windowArguments{};  ///< of the window that was started last
  /// Called whenever the command reads the clock, which it does for each file it reads.
  std::function<void(std::stop_source&)> atClock{};

  /// Creates the folder "phone" with a snapshot. Every file in `media` gets the content `content`.
  void addPhone(const std::string& snapshot, const std::vector<std::string>& media = {},
                const std::string& content = "0123456789") const {
    folder.write("phone/snapshot.json", snapshot);
    std::filesystem::create_directories(folder / "phone/media");
    for (const std::string& name : media) folder.write("phone/media/" + name, content);
  }

  /// Returns the id of a record created at `time`.
  Uuid recordID() const {
    Uuid id;
    auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    for (std::size_t i = 4; i-- > 0; seconds >>= 8) {
      id.bytes.at(i) = static_cast<std::uint8_t>(seconds & 0xFF);
    }
    return id;
  }

  /// Runs a command line. The arguments "phone", "photos…" and "other" are replaced by the paths of
  /// those folders.
  CommandResult run(std::vector<std::string> arguments) const {
    for (std::string& argument : arguments) {
      if (argument == "phone" || argument.starts_with("photos") || argument == "other") {
        argument = folder / argument;
      }
    }
    StringSink out;
    StringSink err;
    std::stop_source stop;
    Environment surrounding = environment;
    surrounding.emplace("XDG_STATE_HOME", folder / "state");
    surrounding.emplace("XDG_CONFIG_HOME", folder / "config");
    surrounding.emplace("XDG_CACHE_HOME", folder / "cache");
    const auto defaults = openDefaults(surrounding);
    const Surroundings surroundings{.out = out,
                                    .err = err,
                                    .environment = surrounding,
                                    .defaults = defaults.get(),
                                    .systemLocaleID = localeID,
                                    .messagesLocaleID = messagesLocaleID,
                                    .systemTimeZoneID = "UTC",
                                    .gazetteerPath = gazetteerPath,
                                    .conversionProgram = conversionProgram,
                                    .outColumns = outColumns,
                                    .errColumns = errColumns,
                                    .now =
                                        [&] {
                                          if (atClock) atClock(stop);
                                          return time;
                                        },
                                    .newID = [&] { return recordID(); },
                                    .catchInterrupts =
                                        [&] {
                                          if (isInterrupted) stop.request_stop();
                                          return stop.get_token();
                                        },
                                    .phones = phones,
                                    .canStart = [&](const auto&) { return isWindowInstalled; },
                                    .become =
                                        [&](const std::string&, const auto& words) {
                                          windowArguments = words;
                                          return windowFault;
                                        }};
    const ExitStatus status = runCommandLine(arguments, surroundings);
    return {status, out.text(), err.text()};
  }

  /// As run(), with the rights of an ordinary user who has only the rights `left` to the folder
  /// `closed` in the meantime.
  CommandResult runKeptOutOf(const std::string& closed, const std::vector<std::string>& arguments,
                             std::filesystem::perms left = std::filesystem::perms::none) const {
    namespace fs = std::filesystem;
    constexpr unsigned nobody = 65534;
    const auto give = [](const std::string& path) {
      EXPECT_TRUE(::geteuid() != 0 || ::lchown(path.c_str(), nobody, nobody) == 0) << path;
    };
    give(folder.path());
    for (const auto& entry : fs::recursive_directory_iterator{folder.path()}) {
      give(entry.path().string());
    }
    fs::permissions(folder / closed, left);
    std::optional<CommandResult> result;
    // A thread has its own file system rights, inherited by the threads that it starts.
    std::thread{[&] {
      if (::geteuid() == 0) ::setfsuid(nobody);
      result = run(arguments);
    }}.join();
    fs::permissions(folder / closed, fs::perms::owner_all);
    return *result;
  }
};

/// Files of ten bytes: a Live Photo with an edit and its sidecar, a still and a film of the next
/// day, an undated picture, and a sidecar without its picture.
inline const std::string smallSnapshot = R"([
  {"name":"IMG_0001.HEIC","dir":"100APPLE","kind":"photo","size":10,"exifDate":"2026:05:20 12:00:00","exifOffset":"+00:00","lat":41.9,"lon":12.5},
  {"name":"IMG_0001.MOV","dir":"100APPLE","kind":"video","size":10,"exifDate":"2026:05:20 12:00:00","exifOffset":"+00:00"},
  {"name":"IMG_0001.AAE","dir":"100APPLE","kind":"sidecar","size":10},
  {"name":"IMG_E0001.HEIC","dir":"100APPLE","kind":"photo","size":10,"exifDate":"2026:05:20 12:00:00","exifOffset":"+00:00"},
  {"name":"IMG_0002.JPG","dir":"100APPLE","kind":"photo","size":10,"itemDate":1779364800.5,"cam":true,"px":2000,"py":1500,"lat":41.9,"lon":12.501},
  {"name":"IMG_0003.MOV","dir":"100APPLE","kind":"video","size":10,"itemDate":1779368400},
  {"name":"IMG_0004.PNG","kind":"photo","size":10},
  {"name":"IMG_0005.AAE","dir":"100APPLE","kind":"sidecar","size":10}
])";
inline const std::vector<std::string> smallMedia{"IMG_0001.HEIC",  "IMG_0001.MOV", "IMG_0001.AAE",
                                                 "IMG_E0001.HEIC", "IMG_0002.JPG", "IMG_0003.MOV",
                                                 "IMG_0004.PNG",   "IMG_0005.AAE"};

}  // namespace tavrix::cli
