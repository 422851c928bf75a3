#include "runs/RepairRun.h"

#include <gmock/gmock.h>

#include "foundation/Digest.h"
#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

/// Delivers the id of an asset, filled up to 1000 bytes.
struct IdSource : MediaSource {
  std::function<void()> before{};
  static std::string contentOf(const MediaAsset& asset) {
    std::string content{asset.id()};
    content.resize(asset.sizeBytes(), '.');
    return content;
  }
  void download(const MediaAsset& asset, DownloadDestination& destination) override {
    if (before) before();
    const std::string content = contentOf(asset);
    destination.append(std::as_bytes(std::span{content}));
  }
};

/// Four recorded files: one intact, one missing, one damaged in its bytes and one in its size. A
/// file with the first name for a damaged one exists already.
struct Damage {
  Damage() {
    std::vector<MediaAsset> assets;
    DestinationMarker::PhoneRecord record;
    record.phoneHash = phone.hash;
    for (const std::string name : {"damaged", "intact", "missing", "short"}) {
      const std::string id = name + ".HEIC";
      const MediaAsset asset{id,    id,           std::nullopt, MediaKind::photo, 1000U,
                             taken, std::nullopt, false,        std::nullopt,     std::nullopt};
      assets.push_back(asset);
      record.files.push_back(
          {"day/" + id, 1000, sha256Hex(IdSource::contentOf(asset)), id, std::nullopt});
      temporary.write("day/" + id, IdSource::contentOf(asset));
    }
    // The digest of this one was never recorded.
    record.files.back().sha256 = std::nullopt;
    bundles = BundleBuilder::makeBundles(assets);
    temporary.write("day/damaged.HEIC", std::string(1000, 'd'));
    temporary.write("day/damaged (damaged).HEIC", "of an earlier repair");
    temporary.write("day/short.HEIC", "short");
    std::filesystem::remove(temporary / "day/missing.HEIC");
    DestinationMarker::save(*openFolder(temporary.path()), record);
  }

  DestinationListing listing() const { return listDestination(*openFolder(temporary.path())); }
  CopyVerification::Report verified(const DestinationListing& listing) const {
    return CopyVerification::verify(*openFolder(temporary.path()), listing, {});
  }
  std::uint64_t lostFiles() const { return verified(listing()).lostFiles(); }

  RepairOutcome repair(Folder& folder, IdSource source = {}, const std::stop_token& stop = {}) {
    const DestinationListing found = listing();
    const auto plan = CopyRepair::plan(verified(found), *found.marker, phone.hash, bundles);
    RepairRun::Setup setup;
    setup.phone = phone;
    setup.now = [] { return Instant{std::chrono::hours{48}}; };
    setup.spaceWait.sleep = [](std::chrono::milliseconds, const std::stop_token&) {};
    return RepairRun{setup, folder, *found.marker, plan}.run(source, {}, stop);
  }
  /// Returns the contents of all files except the program's own.
  std::vector<std::string> contents() const {
    std::vector<std::string> result;
    const auto folder = openFolder(temporary.path());
    folder->visitAll([&](const std::string& path, const FileStatus& status) {
      const bool isMedia = path.starts_with("day/") && !path.ends_with(".part");
      if (isMedia && status.type == FileStatus::Type::file) {
        result.push_back(temporary.read(path));
      }
    });
    return result;
  }

  PhoneIdentity phone = snapshotPhone("iPhone");
  Instant taken{std::chrono::hours{24 * 365}};
  std::vector<AssetBundle> bundles;
  TemporaryFolder temporary;
};

struct RepairRunTest : testing::Test, Damage {};

TEST_F(RepairRunTest, lostFiles_areBackAndTheDamagedOnesAreBeside) {
  const auto folder = openFolder(temporary.path());
  const RepairOutcome outcome = repair(*folder);
  EXPECT_EQ(outcome.repaired,
            (std::vector<RepairedFile>{
                {"day/damaged.HEIC", "damaged.HEIC", 1000, "day/damaged (damaged) (2).HEIC"},
                {"day/missing.HEIC", "missing.HEIC", 1000, std::nullopt},
                {"day/short.HEIC", "short.HEIC", 1000, "day/short (damaged).HEIC"}}));
  EXPECT_EQ(temporary.read("day/damaged (damaged).HEIC"), "of an earlier repair");
  EXPECT_EQ(temporary.read("day/damaged (damaged) (2).HEIC"), std::string(1000, 'd'));
  EXPECT_EQ(temporary.read("day/short (damaged).HEIC"), "short");
  EXPECT_EQ(folder->status("day/missing.HEIC")->modified, taken);
  // The digest that the record lacked is now in it, and nothing else has changed there.
  const auto report = verified(listing());
  EXPECT_EQ(report.count(CopyVerification::State::intact), 4U);
  EXPECT_THAT(repair(*folder).repaired, IsEmpty());
}

TEST_F(RepairRunTest, anyOperationAtWhichTheProcessDies_losesNothingAndARepeatFinishes) {
  bool isReached = true;
  int deaths = 0;
  for (int diesAt = 1; isReached; ++diesAt) {
    Damage fresh;
    const std::vector<std::string> before = fresh.contents();
    FaultyFolder folder{openFolder(fresh.temporary.path())};
    int count = 0;
    // From its death on the process changes nothing, not even to clean up.
    folder.faults().rule = [&](FileOperation operation, const std::string& path) {
      if (++count < diesAt) return;
      if (operation == FileOperation::write) throw ShortWrite{10, EIO};
      throw FileError{operation, path, EIO};
    };
    fresh.repair(folder);
    isReached = count >= diesAt;
    deaths += isReached ? 1 : 0;
    EXPECT_THAT(fresh.contents(), IsSupersetOf(before)) << diesAt;
    fresh.repair(*openFolder(fresh.temporary.path()));
    EXPECT_EQ(fresh.lostFiles(), 0U) << diesAt;
    EXPECT_THAT(fresh.contents(), IsSupersetOf(before)) << diesAt;
    EXPECT_THAT(fresh.contents(), SizeIs(7)) << diesAt;
  }
  EXPECT_GT(deaths, 20);
}

TEST_F(RepairRunTest, anyOperationThatFails_leavesATrueOutcome) {
  for (const int code : {EACCES, ENOSPC}) {
    bool isReached = true;
    for (int failsAt = 1; isReached; ++failsAt) {
      Damage fresh;
      const std::vector<std::string> before = fresh.contents();
      FaultyFolder folder{openFolder(fresh.temporary.path())};
      int count = 0;
      folder.faults().rule = [&](FileOperation operation, const std::string& path) {
        if (++count == failsAt) throw FileError{operation, path, code};
      };
      const RepairOutcome outcome = fresh.repair(folder);
      isReached = count >= failsAt;
      folder.faults().rule = {};
      EXPECT_THAT(fresh.contents(), IsSupersetOf(before)) << failsAt;
      const auto lost = outcome.failed.size() + outcome.kept.size();
      EXPECT_LE(fresh.lostFiles(), lost) << failsAt;
      // After a sync that failed, files that are there may be lost.
      if (!outcome.interruption) {
        EXPECT_EQ(fresh.lostFiles(), lost) << failsAt;
      }
      EXPECT_EQ(outcome.repaired.size() + lost, 3U) << failsAt;
      for (const RepairedFile& file : outcome.repaired) {
        EXPECT_TRUE(!file.damagedPath || folder.status(*file.damagedPath)) << failsAt;
      }
      // A full disk is waited for.
      EXPECT_FALSE(code == ENOSPC && outcome.interruption) << failsAt;
    }
  }
}

TEST_F(RepairRunTest, bytesThatAreNotTheRecordedOnes_changeNothing) {
  auto record = *listing().marker->record(phone.hash);
  for (auto& file : record.files) file.sha256 = std::string(64, '0');
  const auto folder = openFolder(temporary.path());
  DestinationMarker::save(*folder, record);
  const std::vector<std::string> before = contents();
  const RepairOutcome outcome = repair(*folder);
  EXPECT_THAT(outcome.kept, SizeIs(4));
  for (const auto& file : outcome.kept) {
    EXPECT_EQ(file.reason, CopyRepair::KeptReason::otherContent) << file.path;
  }
  EXPECT_EQ(contents(), before);
}

TEST_F(RepairRunTest, stop_reportsWhatGotThrough) {
  std::stop_source stop;
  IdSource source;
  source.before = [&, count = 0]() mutable {
    if (++count == 2) stop.request_stop();
  };
  const auto folder = openFolder(temporary.path());
  const RepairOutcome outcome = repair(*folder, source, stop.get_token());
  EXPECT_TRUE(outcome.isCancelled);
  EXPECT_EQ(outcome.repaired.size() + outcome.kept.size(), 3U);
  EXPECT_EQ(lostFiles(), outcome.kept.size());
  EXPECT_EQ(outcome.kept.back().reason, CopyRepair::KeptReason::notReached);
}

}  // namespace
}  // namespace tavrix
