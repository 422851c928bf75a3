#include <fmt/format.h>

#include <filesystem>
#include <fstream>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "foundation/Digest.h"
#include "foundation/files/Folder.h"
#include "transfer/CopyVerification.h"
#include "transfer/FileDigester.h"

namespace tavrix::bench {
namespace {

struct Tree {
  std::size_t files;
  std::size_t bytes;
  const char* what;
};

/// Writes the files and the record of a phone that has them.
void writeDestination(const std::string& path, const Tree& tree) {
  std::filesystem::create_directories(path);
  DestinationMarker::PhoneRecord record;
  record.phoneHash = sha256Hex("bench");
  std::string content(tree.bytes, '\0');
  std::uint64_t state = 1;
  for (std::size_t i = 0; i < tree.files; ++i) {
    fillWithNoise(content, state);
    const std::string folder = fmt::format("day-{:03}", i / 100);
    const std::string name = fmt::format("{}/IMG_{:05}.HEIC", folder, i);
    std::filesystem::create_directories(path + "/" + folder);
    std::ofstream{path + "/" + name, std::ios::binary} << content;
    record.files.push_back({name, content.size(), sha256Hex(content), name, std::nullopt});
  }
  DestinationMarker::save(*openFolder(path), record);
}

void verifyAsOthersDo(const std::string& path) {
  shell("find '" + path + "' -type f -print0 | xargs -0 sha256sum > /dev/null");
}

void verifyAsWeDo(const std::string& path, const Tree& tree) {
  const auto folder = openFolder(path);
  const auto report =
      CopyVerification::verify(*folder, listDestination(*folder), {workerCount(), false});
  const auto intact = report.count(CopyVerification::State::intact);
  if (intact != tree.files) fmt::print("unexpected: {} intact\n", intact);
}

}  // namespace

void benchVerifying(const std::string& folder) {
  constexpr double target = 0.7;
  for (const Tree& tree :
       {Tree{400, 3'000'000, "400 files of 3 MB"}, Tree{20'000, 20'000, "20,000 files of 20 KB"}}) {
    writeDestination(folder, tree);
    const Duel best =
        duel(3, [&] { verifyAsWeDo(folder, tree); }, [&] { verifyAsOthersDo(folder); });
    print({fmt::format("verifying {}, cached : sha256sum", tree.what), time(best.ours),
           time(best.theirs), best.ratio(), target});
    std::filesystem::remove_all(folder);
  }
}

}  // namespace tavrix::bench
