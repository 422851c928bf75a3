#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "foundation/files/Folder.h"
#include "runs/ArchivePacker.h"

namespace tavrix::bench {
namespace {

constexpr std::size_t fileCount = 700;
constexpr std::size_t fileBytes = 3'000'000;

/// Writes the files as a run stages them, and returns the content of the archive.
ArchiveContent writeStaged(const std::string& path) {
  const std::string folder = ".Tavrix-staging/day";
  std::filesystem::create_directories(path + "/" + folder);
  ArchiveContent content;
  std::string bytes(fileBytes, '\0');
  std::uint64_t state = 1;
  for (std::size_t i = 0; i < fileCount; ++i) {
    fillWithNoise(bytes, state);
    const std::string name = fmt::format("IMG_{:05}.HEIC", i);
    std::ofstream{path + "/" + folder + "/" + name, std::ios::binary} << bytes;
    content.entries.push_back({"day/" + name, bytes.size(), Instant{}});
    content.paths.push_back(folder + "/" + name);
  }
  return content;
}

void packAsWeDo(const std::string& path, const ArchiveContent& content) {
  const auto folder = openFolder(path);
  const auto record =
      ArchivePacker{*folder, TimeZone::utc(), {}}.pack("day.zip", content, [](std::uint64_t) {});
  if (record.size < fileCount * fileBytes) fmt::print("unexpected: {} bytes\n", record.size);
}

void packAsOthersDo(const std::string& path) {
  shell("cd '" + path + "/.Tavrix-staging' && zip -0 -q -r ../other.zip day");
}

}  // namespace

void benchPacking(const std::string& folder) {
  constexpr double target = 0.6;
  const ArchiveContent content = writeStaged(folder);
  // Flushes first, so that neither side pays for data that the other has left unwritten.
  const auto measured = [&](const char* name, const auto& pack) {
    std::filesystem::remove(folder + "/" + name);
    shell("sync -f '" + folder + "'");
    return seconds([&] { pack(); });
  };
  Duel best{1e9, 1e9};
  for (int round = 0; round < 3; ++round) {
    best.theirs = std::min(best.theirs, measured("other.zip", [&] { packAsOthersDo(folder); }));
    best.ours = std::min(best.ours, measured("day.zip", [&] { packAsWeDo(folder, content); }));
  }
  print({"packing 2.1 GB, read back and on stable storage : zip -0 -r", time(best.ours),
         time(best.theirs), best.ratio(), target});
  std::filesystem::remove_all(folder);
}

}  // namespace tavrix::bench
