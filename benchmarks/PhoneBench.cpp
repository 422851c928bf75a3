// A simulated phone on the cable. The catalogue of 20,000 small pictures, where each call to the
// phone takes a millisecond, by number of calls; and copying large films against the bare reading
// of the same films by the library that communicates with phones.

#include <fmt/format.h>
#include <libimobiledevice/afc.h>
#include <libimobiledevice/libimobiledevice.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "Benches.h"
#include "Measure.h"
#include "device/cable/CameraMediaSource.h"
#include "device/cable/PhoneCatalogue.h"
#include "device/metadata/tests/support/SampleFiles.h"
#include "device/simulator/PhoneSimulator.h"
#include "media/SnapshotItem.h"

namespace tavrix::bench {
namespace {

constexpr int pictures = 20'000;
constexpr int picturesInFolder = 1000;
constexpr int films = 4;
constexpr std::size_t filmBytes = std::size_t{96} << 20U;

void writeFile(const std::string& path, std::string_view bytes) {
  std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
  std::ofstream{path, std::ios::binary} << bytes;
}

void writePictures(const std::string& root) {
  const std::string still =
      testbytes::jpeg(testbytes::exifSegment(testbytes::rome()) + testbytes::frame(4032, 3024));
  for (int i = 0; i < pictures; ++i) {
    writeFile(fmt::format("{}/DCIM/{}APPLE/IMG_{:05}.JPG", root, 100 + i / picturesInFolder, i),
              still);
  }
}

std::string filmPath(int index) { return fmt::format("100APPLE/IMG_{}.MOV", index); }

std::unique_ptr<PhoneSimulator> plugIn(const std::string& folder, const std::string& root,
                                       std::chrono::microseconds latency) {
  SimulatedPhone phone;
  phone.root = root;
  phone.latency = latency;
  auto simulator =
      std::make_unique<PhoneSimulator>(folder + "/mux", std::vector<SimulatedPhone>{phone});
  ::setenv("USBMUXD_SOCKET_ADDRESS", simulator->address().c_str(), 1);
  return simulator;
}

void look(PhoneBrowser& browser, const std::string& state) {
  const auto files = browser.openFiles(SimulatedPhone{}.deviceID, {});
  const auto catalogue =
      PhoneCatalogue::read(*files, {.phoneKey = "bench", .directory = state, .now = [] {
                                      return std::chrono::floor<std::chrono::milliseconds>(
                                          std::chrono::system_clock::now());
                                    }});
  if (catalogue.items.size() != pictures || !catalogue.items.back().px) {
    fmt::print("unexpected: {} pictures\n", catalogue.items.size());
  }
}

/// Prints one row: the time against that of the calls alone, at a millisecond each.
void lookOnce(const char* what, PhoneBrowser& browser, const PhoneSimulator& simulator,
              const std::string& state) {
  constexpr double callSeconds = 0.001;
  const auto before = simulator.fileCalls();
  const double ours = seconds([&] { look(browser, state); });
  const auto calls = static_cast<double>(simulator.fileCalls() - before);
  print({fmt::format("{} of 20,000 at 1 ms, {:.2f} calls a file : its calls alone", what,
                     calls / pictures),
         time(ours), time(calls * callSeconds), ours / (calls * callSeconds), 1.5});
}

struct Discarding : DownloadDestination {
  void append(std::span<const std::byte> bytes) override { count += bytes.size(); }
  std::uint64_t count = 0;
};

void download(PhoneBrowser& browser) {
  CameraMediaSource source{{.browser = browser, .deviceID = SimulatedPhone{}.deviceID}};
  Discarding destination;
  for (int i = 0; i < films; ++i) {
    SnapshotItem item;
    item.name = "film.MOV";
    item.kind = "video";
    item.size = filmBytes;
    source.download(item.mediaAsset(filmPath(i), TimeZone::utc()), destination);
  }
  if (destination.count != films * filmBytes) fmt::print("unexpected: {}\n", destination.count);
}

/// Reads in a loop with the library only: 1 MiB at a time, without any checks.
void readBare() {
  idevice_t device = nullptr;
  afc_client_t client = nullptr;
  idevice_new(&device, SimulatedPhone{}.deviceID.c_str());
  afc_client_start_service(device, &client, "bench");
  std::vector<char> buffer(std::size_t{1} << 20U);
  std::uint64_t total = 0;
  for (int i = 0; i < films; ++i) {
    std::uint64_t handle = 0;
    afc_file_open(client, ("/DCIM/" + filmPath(i)).c_str(), AFC_FOPEN_RDONLY, &handle);
    std::uint32_t count = 0;
    while (afc_file_read(client, handle, buffer.data(), static_cast<std::uint32_t>(buffer.size()),
                         &count) == AFC_E_SUCCESS &&
           count > 0) {
      total += count;
    }
    afc_file_close(client, handle);
  }
  afc_client_free(client);
  idevice_free(device);
  if (total != films * filmBytes) fmt::print("unexpected: {} bytes\n", total);
}

}  // namespace

void benchPhone(const std::string& folder) {
  const auto browser = Phones::openBrowser();
  {
    for (int i = 0; i < films; ++i) {
      writeFile(folder + "/films/DCIM/" + filmPath(i), std::string(filmBytes, 'x'));
    }
    const auto simulator = plugIn(folder, folder + "/films", std::chrono::microseconds{0});
    const Duel copying = duel(4, [&] { download(*browser); }, readBare);
    print({"copying 400 MB of films from a phone : bare reading", time(copying.ours),
           time(copying.theirs), copying.ratio(), 1 / 0.9});
  }
  writePictures(folder + "/pictures");
  const auto simulator = plugIn(folder, folder + "/pictures", std::chrono::milliseconds{1});
  lookOnce("first look", *browser, *simulator, folder + "/state");
  lookOnce("second look", *browser, *simulator, folder + "/state");
  std::filesystem::remove_all(folder);
}

}  // namespace tavrix::bench
