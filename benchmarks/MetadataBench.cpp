// Reads the catalogue of a folder. With 20,000 small pictures: the first scan against the bare
// reading of the beginnings of the same files, and the second scan, which finds all in the cache,
// against the first. With 10,000 stills: the first scan against exiftool. With 100,000 files: the
// second scan against find and reading the cache file.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "Benches.h"
#include "Measure.h"
#include "device/folders/FolderCatalogue.h"
#include "device/folders/SourceFolder.h"
#include "device/metadata/FileBytes.h"
#include "device/metadata/RangedReader.h"
#include "device/metadata/tests/support/SampleFiles.h"

namespace tavrix::bench {
namespace {

constexpr int filesInFolder = 1000;

enum class Content { stillsAndFilms, stills, small };

/// Writes pictures and films alternately, as on a phone. Small ones have nothing after their
/// metadata.
void writePhone(const std::string& folder, int files, Content content) {
  using namespace testbytes;
  constexpr std::size_t fileBytes = 40'000;
  const std::string still = jpeg(exifSegment(rome()) + frame(4032, 3024));
  const std::string heic = heif({.width = 4032, .height = 3024, .exif = rome()});
  const std::string motion = film({.width = 1920,
                                   .height = 1440,
                                   .creationDate = "2026-05-20T12:00:00+0300",
                                   .location = "+41.9012+012.5000+021.300/"},
                                  fileBytes);
  const int kinds = content == Content::stillsAndFilms ? 3 : 2;
  for (int i = 0; i < files; ++i) {
    const std::string inner = fmt::format("{}/{}APPLE", folder, 100 + i / filesInFolder);
    if (i % filesInFolder == 0) std::filesystem::create_directories(inner);
    const bool isStill = i % kinds == 0;
    const bool isMotion = i % kinds == 2;
    std::string bytes = isStill ? still : isMotion ? motion : heic;
    if (!isMotion && content != Content::small) bytes.resize(fileBytes, 'x');
    const char* const extension = isStill ? "JPG" : isMotion ? "MOV" : "HEIC";
    std::ofstream{fmt::format("{}/IMG_{:05}.{}", inner, i, extension), std::ios::binary} << bytes;
  }
}

void look(const std::string& folder, const std::string& state, int files) {
  const auto catalogue =
      FolderCatalogue::read(folder, {.phoneKey = "bench", .directory = state, .now = [] {
                                       return std::chrono::floor<std::chrono::milliseconds>(
                                           std::chrono::system_clock::now());
                                     }});
  const auto known =
      std::count_if(catalogue.items.begin(), catalogue.items.end(),
                    [](const SnapshotItem& item) { return item.px && item.exifDate; });
  if (known != files) fmt::print("unexpected: {} files known\n", known);
}

/// Lists the folder and reads only the first range of each file.
void readBare(const std::string& folder, int files) {
  std::array<char, FileBytes::rangeBytes> buffer{};
  std::uint64_t bytes = 0;
  for (const std::string& path : SourceFolder::list(folder).paths) {
    bytes += openForRangedReading(folder + "/" + path)->read(0, buffer);
  }
  if (bytes < static_cast<std::uint64_t>(files) * FileBytes::rangeBytes) {
    fmt::print("unexpected: {} bytes\n", bytes);
  }
}

void benchLooks(const std::string& folder) {
  constexpr int files = 20'000;
  const std::string phone = folder + "/phone";
  const std::string state = folder + "/state";
  writePhone(phone, files, Content::stillsAndFilms);
  const auto first = [&] {
    std::filesystem::remove_all(state);
    look(phone, state, files);
  };
  const Duel heads = duel(4, first, [&] {
    shell("find '" + phone + "' -type f -exec head -q -c 65536 {} + > /dev/null");
  });
  print({"first look at 20,000 files : find, head -c 65536", time(heads.ours), time(heads.theirs),
         heads.ratio(), 1.5});
  const Duel bare = duel(4, first, [&] { readBare(phone, files); });
  print({"first look at 20,000 files : listing and one bare range of each", time(bare.ours),
         time(bare.theirs), bare.ratio(), 2.5});
  const Duel second = duel(4, [&] { look(phone, state, files); }, first);
  print({"second look, all from the cache : first look", time(second.ours), time(second.theirs),
         second.ratio(), 0.6});
  std::filesystem::remove_all(folder);
}

void benchExiftool(const std::string& folder) {
  constexpr int files = 10'000;
  const std::string phone = folder + "/phone";
  const std::string state = folder + "/state";
  writePhone(phone, files, Content::stills);
  const auto first = [&] {
    std::filesystem::remove_all(state);
    look(phone, state, files);
  };
  // Once is enough for a command that takes a minute.
  Duel exiftool = duel(1, first, [&] { shell("exiftool -fast2 -r '" + phone + "' > /dev/null"); });
  exiftool.ours = std::min(exiftool.ours, duel(4, first, [] {}).ours);
  print({"first look at 10,000 stills : exiftool -fast2 -r", time(exiftool.ours),
         time(exiftool.theirs), exiftool.ratio(), 1.0 / 50});
  std::filesystem::remove_all(folder);
}

void benchManyFiles(const std::string& folder) {
  constexpr int files = 100'000;
  const std::string phone = folder + "/phone";
  const std::string state = folder + "/state";
  writePhone(phone, files, Content::small);
  look(phone, state, files);
  const Duel second = duel(
      8, [&] { look(phone, state, files); },
      [&] {
        shell("find '" + phone + "' -printf '%s %T@ %p\\n' > /dev/null && cat '" + state +
              "'/*.jsonl > /dev/null");
      });
  print({"second look at 100,000 files : find -printf, reading the cache's file", time(second.ours),
         time(second.theirs), second.ratio(), 1.5});
  std::filesystem::remove_all(folder);
}

}  // namespace

void benchMetadata(const std::string& folder) {
  benchLooks(folder);
  benchManyFiles(folder);
  benchExiftool(folder);
}

}  // namespace tavrix::bench
