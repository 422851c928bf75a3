// Converts 20 pictures of a phone to JPEG, two at a time, against a loop over a converter packaged
// by the system. TAVRIX_PHONE_FILES names a folder with the HEIC files to use.

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <thread>
#include <vector>

#include "Benches.h"
#include "Measure.h"
#include "conversion/ProcessConverter.h"

namespace tavrix::bench {
namespace {

constexpr std::size_t pictures = 20;

/// Returns the names of the files that the yardstick can read as well.
std::vector<std::string> heicFiles(const std::string& folder) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator{folder}) {
    const std::string path = entry.path().string();
    const bool isHeic = entry.path().extension() == ".HEIC" || entry.path().extension() == ".heic";
    const std::string command = fmt::format("heif-info '{}' >/dev/null 2>&1", path);
    if (isHeic && std::system(command.c_str()) == 0)
      files.push_back(entry.path().filename().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

void convertAll(const std::vector<std::string>& sources, const std::string& folder) {
  ProcessConverter converter{TAVRIX_CONVERT_PROGRAM};
  const auto opened = openFolder(folder);
  const MediaAsset asset{"1",          "IMG_1.HEIC", std::nullopt, MediaKind::photo, 1,
                         std::nullopt, std::nullopt, false,        std::nullopt,     std::nullopt};
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < pictures; i = next++) {
      const std::string target = fmt::format("ours-{}.jpg", i);
      opened->removeFile(target);
      converter.convert(asset, planned_conversion::Jpeg{0.85}, *opened, sources[i % sources.size()],
                        target, {}, {});
    }
  };
  const std::jthread helper{work};
  work();
}

void loopOver(const std::vector<std::string>& sources, const std::string& folder) {
  for (std::size_t i = 0; i < pictures; ++i) {
    shell(fmt::format("heif-convert -q 85 '{0}/{1}' '{0}/theirs-{2}.jpg' >/dev/null", folder,
                      sources[i % sources.size()], i));
  }
}

}  // namespace

void benchStills(const std::string& folder) {
  const char* const phone = std::getenv("TAVRIX_PHONE_FILES");
  const auto sources = phone == nullptr ? std::vector<std::string>{} : heicFiles(phone);
  if (sources.empty()) {
    fmt::print("stills: TAVRIX_PHONE_FILES names no folder with HEIC files\n");
    return;
  }
  std::filesystem::create_directories(folder);
  for (const std::string& name : sources) {
    std::filesystem::copy_file(std::filesystem::path{phone} / name,
                               std::filesystem::path{folder} / name,
                               std::filesystem::copy_options::overwrite_existing);
  }
  const Duel result =
      duel(3, [&] { convertAll(sources, folder); }, [&] { loopOver(sources, folder); });
  print({fmt::format("{} HEIC of {} : heif-convert in a loop", pictures, sources.size()),
         time(result.ours), time(result.theirs), result.ratio(), 0.6});
}

}  // namespace tavrix::bench
