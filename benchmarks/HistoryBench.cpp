#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "Benches.h"
#include "Measure.h"
#include "history/HistoryStore.h"

namespace tavrix::bench {
namespace {

constexpr int recordCount = 10'000;
constexpr int shotCount = 500;

/// Returns a run of 500 shots, every third of which is a Live Photo.
TransferRecord recordOfRun(int number) {
  TransferRecord record;
  for (std::size_t i = 0; i < 4; ++i) {
    record.id.bytes.at(i) = static_cast<std::uint8_t>(number >> (8 * i));
  }
  record.startedAt = Instant{std::chrono::seconds{1'700'000'000} + std::chrono::minutes{number}};
  record.finishedAt = record.startedAt + std::chrono::seconds{42};
  record.phoneName = "iPhone";
  record.destinationPath = "/home/anna/Pictures/iPhone";
  for (int day = 0; day < 10; ++day) {
    record.folders.push_back({fmt::format("2026-05-{:02}", day + 1), std::nullopt, {}});
  }
  for (int i = 0; i < shotCount; ++i) {
    TransferRecord::Folder& folder = record.folders.at(static_cast<std::size_t>(i % 10));
    TransferRecord::Shot shot;
    shot.id = fmt::format("100APPLE/IMG_{:04}.HEIC", i);
    shot.name = fmt::format("IMG_{:04}.HEIC", i);
    shot.captureDate = record.startedAt;
    shot.latitude = 41.9;
    shot.longitude = 12.5;
    shot.outcome = TransferRecord::Outcome::onMac;
    shot.files.push_back({shot.id, TransferRecord::Role::original, shot.name, shot.name,
                          folder.name + "/" + shot.name, 2'000'000,
                          TransferRecord::PartState::onMac, std::nullopt, false});
    if (i % 3 == 0) shot.files.push_back(shot.files.front());
    folder.shots.push_back(std::move(shot));
  }
  record.totals = totalsOf(record.folders);
  return record;
}

/// Does the minimum work of a store: writes the bytes to stable storage under another name, renames
/// the file and syncs the folder entry.
void writeBare(const std::string& folder, int number, const std::string& text) {
  const std::string path = fmt::format("{}/{}.json", folder, number);
  const std::string temporary = path + ".part";
  const int file = ::open(temporary.c_str(), O_CREAT | O_WRONLY | O_TRUNC | O_CLOEXEC, 0644);
  const bool isWritten =
      ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
      ::fsync(file) == 0 && ::close(file) == 0 && ::rename(temporary.c_str(), path.c_str()) == 0;
  const int directory = ::open(folder.c_str(), O_DIRECTORY | O_RDONLY | O_CLOEXEC);
  if (!isWritten || ::fsync(directory) != 0) std::abort();
  ::close(directory);
}

void benchWriting(const std::string& folder, HistoryStore& store) {
  const std::string bare = folder + "-bare";
  std::filesystem::create_directories(bare);
  const std::string text = TransferRecordCoding::encode(recordOfRun(0));
  double ours = 0;
  double theirs = 0;
  // The yardstick runs in every other hundred, so that both use the same disk; its time is doubled.
  for (int number = 0; number < recordCount; ++number) {
    const TransferRecord record = recordOfRun(number);
    ours += seconds([&] { store.add(record); });
    if (number % 200 < 100) theirs += 2 * seconds([&] { writeBare(bare, number, text); });
  }
  std::filesystem::remove_all(bare);
  print({fmt::format("10,000 records of 500 shots ({} KB each) : writing the bare bytes",
                     text.size() / 1000),
         time(ours), time(theirs), ours / theirs, 2.0});
}

void expectAll(const std::vector<RecordSummary>& runs) {
  if (runs.size() != static_cast<std::size_t>(recordCount)) std::abort();
}

void benchListing(const std::string& folder, HistoryStore& store) {
  const Duel first = duel(
      1, [&] { expectAll(store.runs()); },
      [&] { shell("find '" + folder + "' -name '*Z-*' -exec cat {} + > /dev/null"); });
  print({"their first list, the index made : reading all bytes", time(first.ours),
         time(first.theirs), first.ratio(), 20});
  const Duel again = duel(
      5, [&] { expectAll(store.runs()); },
      [&] { shell("find '" + folder + "' -type f -printf '%s %p\\n' > /dev/null"); });
  print({"every further list : find -printf", time(again.ours), time(again.theirs), again.ratio(),
         5.0});
}

}  // namespace

void benchHistory(const std::string& folder) {
  std::filesystem::create_directories(folder);
  const auto opened = openFolder(folder);
  HistoryStore store{*opened, silentLog()};
  benchWriting(folder, store);
  benchListing(folder, store);
  std::filesystem::remove_all(folder);
}

}  // namespace tavrix::bench
