#pragma once

#include <gmock/gmock.h>
#include <sys/fsuid.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include "cli/Commands.h"
#include "cli/StoredSettings.h"
#include "foundation/json/JsonValue.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix::cli {

/// What a command left.
struct CommandResult {
  ExitStatus status;
  std::string out;
  std::string err;

  /// The output as a document; throws when it is none.
  JsonValue json() const { return parseJson(out); }
};

/// Runs command lines in a small world of their own.
struct CommandTester {
  TemporaryFolder folder;
  Environment environment{};
  std::string localeID = "en_US";
  std::optional<std::string> gazetteerPath{};      ///< places have no names without one
  std::optional<std::string> conversionProgram{};  ///< nothing is converted without one
  std::optional<int> outColumns{};
  std::optional<int> errColumns{};
  Instant time{std::chrono::seconds{1779364800}};  // 2026-05-21T12:00:00Z
  bool isInterrupted = false;                      ///< as soon as a run begins
  PhoneBrowser* phones = nullptr;                  ///< no phones without it
  /// Called whenever the command asks for the time, which it does for each file that it reads.
  std::function<void(std::stop_source&)> atClock{};

  /// Folder "phone" with a snapshot; its media hold each named file with `content`.
  void addPhone(const std::string& snapshot, const std::vector<std::string>& media = {},
                const std::string& content = "0123456789") const {
    folder.write("phone/snapshot.json", snapshot);
    std::filesystem::create_directories(folder / "phone/media");
    for (const std::string& name : media) folder.write("phone/media/" + name, content);
  }

  /// The number of a record that is made at `time`.
  Uuid recordID() const {
    Uuid id;
    auto seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
    for (std::size_t i = 4; i-- > 0; seconds >>= 8) {
      id.bytes.at(i) = static_cast<std::uint8_t>(seconds & 0xFF);
    }
    return id;
  }

  /// Arguments "phone", "photos" and "other" stand for those folders.
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
    const auto defaults = openDefaults(surrounding);
    const Surroundings surroundings{.out = out,
                                    .err = err,
                                    .environment = surrounding,
                                    .defaults = defaults.get(),
                                    .systemLocaleID = localeID,
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
                                    .phones = phones};
    const ExitStatus status = runCommandLine(arguments, surroundings);
    return {status, out.text(), err.text()};
  }

  /// The same with the rights of an ordinary user, whom a folder of the tester's keeps out
  /// meanwhile.
  CommandResult runKeptOutOf(const std::string& closed,
                             const std::vector<std::string>& arguments) const {
    namespace fs = std::filesystem;
    constexpr unsigned nobody = 65534;
    const auto give = [](const std::string& path) {
      EXPECT_TRUE(::geteuid() != 0 || ::lchown(path.c_str(), nobody, nobody) == 0) << path;
    };
    give(folder.path());
    for (const auto& entry : fs::recursive_directory_iterator{folder.path()}) {
      give(entry.path().string());
    }
    fs::permissions(folder / closed, fs::perms::none);
    std::optional<CommandResult> result;
    // The rights are those of a thread and of the threads that it makes.
    std::thread{[&] {
      if (::geteuid() == 0) ::setfsuid(nobody);
      result = run(arguments);
    }}.join();
    fs::permissions(folder / closed, fs::perms::owner_all);
    return *result;
  }
};

/// Ten bytes each: a Live Photo with an edit and its sidecar, a still and a film of the next day,
/// an undated picture, and a sidecar whose picture is gone.
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
