// Thumbnails of pictures in the page cache against the tools of the system, from the cache of the
// program, and the first screen of a simulated phone. TAVRIX_PHONE_FILES names a folder with the
// pictures to use.

#include <fmt/format.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "Benches.h"
#include "Measure.h"
#include "device/simulator/PhoneSimulator.h"
#include "foundation/Text.h"
#include "media/SnapshotItem.h"
#include "services/Thumbnails.h"
#include "sources/SourcePictures.h"

namespace tavrix::bench {
namespace {

constexpr int jpegs = 9000;
constexpr int heics = 1000;
constexpr int screen = 60;

/// Gives files of one type `count` names in `folder`; returns the names.
std::vector<std::string> link(const std::string& from, std::string_view type, int count,
                              const std::string& folder) {
  std::vector<std::filesystem::path> originals;
  for (const auto& entry : std::filesystem::directory_iterator{from}) {
    if (lowerCased(entry.path().extension().string()) == type) originals.push_back(entry.path());
  }
  std::sort(originals.begin(), originals.end());
  std::filesystem::create_directories(folder);
  std::vector<std::string> names;
  for (int i = 0; i < count && !originals.empty(); ++i) {
    names.push_back(fmt::format("IMG_{:05}{}", i, type));
    const auto& original = originals[static_cast<std::size_t>(i) % originals.size()];
    const std::filesystem::path path = folder + "/" + names.back();
    std::error_code failure;
    std::filesystem::create_hard_link(original, path, failure);
    if (failure) std::filesystem::copy_file(original, path);
  }
  return names;
}

std::vector<MediaAsset> assetsOf(const std::string& folder, const std::vector<std::string>& names) {
  std::vector<MediaAsset> assets;
  for (const std::string& name : names) {
    SnapshotItem item;
    item.name = name;
    item.kind = "photo";
    item.size = std::filesystem::file_size(folder + "/" + name);
    assets.push_back(item.mediaAsset("100APPLE/" + name, TimeZone::utc()));
  }
  return assets;
}

enum class Until { first, final };

/// Requests all thumbnails as a window does; every call starts the decoding processes. Returns how
/// many are shown when each has its first, or its final, answer.
int make(const PictureAccess& access, const std::vector<MediaAsset>& assets, Until until,
         const std::optional<std::string>& cache = std::nullopt) {
  StandardMainLoop loop;
  const auto store = openThumbnails(
      {.loop = loop,
       .conversionProgram = TAVRIX_CONVERT_PROGRAM,
       .now =
           [] {
             return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
           },
       .folder = cache},
      {});
  store->setSource(access.key, access.files);
  std::vector<char> isDone(assets.size());
  std::size_t done = 0;
  int shown = 0;
  std::vector<ThumbnailRequest> requests;
  for (std::size_t i = 0; i < assets.size(); ++i) {
    const auto take = [&, i](const ThumbnailAnswer& answer) {
      if (isDone[i] != 0 || (until == Until::final && !answer.isFinal)) return;
      isDone[i] = 1;
      ++done;
      shown += answer.image != nullptr ? 1 : 0;
    };
    requests.push_back(store->request(assets[i], thumbnailSide, ThumbnailPriority::onScreen, take));
  }
  loop.runUntil([&] { return done == assets.size(); });
  return shown;
}

/// Prints a row for pictures of one type, which the shell command shows as well.
void compare(const std::string& what, const std::string& folder,
             const std::vector<std::string>& names, Until until, const std::string& command) {
  const auto access =
      picturesBelow(folder, [](const MediaAsset& asset) { return std::string{asset.name()}; });
  const auto assets = assetsOf(folder, names);
  int shown = 0;
  const Duel result =
      duel(2, [&] { shown = make(access, assets, until); }, [&] { shell(command); });
  print({fmt::format("{} {} ({} shown, {:.0f} a second)", names.size(), what, shown,
                     static_cast<double>(names.size()) / result.ours),
         time(result.ours), time(result.theirs), result.ratio(), 1});
}

void fromCache(const std::string& folder, const std::vector<std::string>& names,
               const std::string& cache) {
  const auto access =
      picturesBelow(folder, [](const MediaAsset& asset) { return std::string{asset.name()}; });
  const auto assets = assetsOf(folder, names);
  const double first = seconds([&] { make(access, assets, Until::final, cache); });
  const double second = seconds([&] { make(access, assets, Until::final, cache); });
  print({fmt::format("{} JPEG from the cache : without it", names.size()), time(second),
         time(first), second / first, 0.2});
}

/// Prints the memory that all pictures take, requested at once.
void memory(const std::string& folder, const std::vector<std::string>& names) {
  constexpr double limit = 256e6;
  const auto access =
      picturesBelow(folder, [](const MediaAsset& asset) { return std::string{asset.name()}; });
  const auto assets = assetsOf(folder, names);
  const PeakMemory peak = peakMemory([&] { make(access, assets, Until::first); });
  print({fmt::format("memory for {} JPEG (largest decoder {:.0f} MB) : 256 MB", names.size(),
                     peak.ofLargestChild / 1e6),
         fmt::format("{:.0f} MB", peak.added / 1e6), "256 MB", peak.added / limit, 1});
}

void firstScreen(const std::string& folder, const std::vector<std::string>& names) {
  SimulatedPhone phone;
  phone.root = folder + "/phone";
  phone.latency = std::chrono::milliseconds{1};
  const PhoneSimulator simulator{folder + "/mux", {phone}};
  ::setenv("USBMUXD_SOCKET_ADDRESS", simulator.address().c_str(), 1);
  const auto browser = Phones::openBrowser();
  const PictureAccess access{"bench", picturesOfPhone(*browser, phone.deviceID, {})};
  const auto assets = assetsOf(phone.root + "/DCIM/100APPLE", names);
  const auto before = simulator.fileCalls();
  int shown = 0;
  const double ours = seconds([&] { shown = make(access, assets, Until::first); });
  const auto calls = static_cast<double>(simulator.fileCalls() - before);
  print({fmt::format(
             "first screen of a phone at 1 ms a call ({} shown, {:.1f} calls each) : a second",
             shown, calls / static_cast<double>(names.size())),
         time(ours), time(1), ours, 1});
}

}  // namespace

void benchThumbnails(const std::string& folder) {
  const char* const files = std::getenv("TAVRIX_PHONE_FILES");
  if (files == nullptr) {
    fmt::print("thumbnails: TAVRIX_PHONE_FILES names no folder with pictures\n");
    return;
  }
  const std::string jpegFolder = folder + "/jpeg";
  const std::string heicFolder = folder + "/heic";
  const auto jpegNames = link(files, ".jpg", jpegs, jpegFolder);
  const auto heicNames = link(files, ".heic", heics, heicFolder);
  // First of all, so that no memory is there from before.
  memory(jpegFolder, jpegNames);
  compare("JPEG, first answer : exiftool -b -ThumbnailImage", jpegFolder, jpegNames, Until::first,
          fmt::format("exiftool -q -q -b -ThumbnailImage '{}' >/dev/null", jpegFolder));
  compare("HEIC, sharp : heif-thumbnailer in a loop", heicFolder, heicNames, Until::final,
          fmt::format("cd '{}' && for f in *; do heif-thumbnailer -s 320 \"$f\" "
                      "../small.png >/dev/null 2>&1 || true; done",
                      heicFolder));
  fromCache(jpegFolder, jpegNames, folder + "/cache");
  firstScreen(folder, link(files, ".jpg", screen, folder + "/phone/DCIM/100APPLE"));
}

}  // namespace tavrix::bench
