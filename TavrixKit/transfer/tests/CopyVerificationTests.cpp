#include "transfer/CopyVerification.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <map>
#include <mutex>

#include "foundation/Digest.h"
#include "transfer/ChecksumMerge.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix::CopyVerification {
namespace {

using DestinationMarker::FileRecord;
using DestinationMarker::PhoneRecord;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const Instant day = *parseIso8601("2026-05-20T12:00:00Z");

/// A folder whose records the test defines.
struct CopyVerificationTest : testing::Test {
  /// Writes a file to disk and returns its entry for a phone's record.
  FileRecord land(const std::string& path, std::size_t size = 1000) const {
    temporary.write(path, contentOf(path, size));
    return {path, size, sha256Hex(contentOf(path, size)), "100APPLE/" + lastName(path), {}};
  }
  /// A file that a killed run had announced in the record.
  static FileRecord claim(const std::string& path, const std::string& localID) {
    return {path, 0, std::nullopt, localID, std::nullopt};
  }
  static std::string lastName(const std::string& path) { return path.substr(path.rfind('/') + 1); }
  void record(char phone, std::vector<FileRecord> files, Instant last = day) {
    DestinationMarker::save(
        folder, PhoneRecord{1, std::string(64, phone), "iPhone", "iPhone", day, last, files});
  }
  Report check(Options options = {2, false}, const std::stop_token& stop = {}) const {
    return verify(folder, listDestination(folder), options, {}, stop);
  }
  std::map<std::string, std::string> states(Options options = {2, false}) const {
    std::map<std::string, std::string> result;
    for (const CheckedFile& file : check(options).files) result[file.path] = textOf(file.state);
    return result;
  }
  std::string stateOf(const std::string& path) const { return states().at(path); }

  TemporaryFolder temporary;
  FaultyFolder folder{openFolder(temporary.path())};
};

TEST_F(CopyVerificationTest, eachFault_isToldByItsOwnState) {
  record('a', {land("day/intact"), land("day/flipped"), land("day/truncated"), land("day/longer"),
               land("day/missing"), land("day/locked"), land("day/link"), land("day/folder"),
               land("empty", 0), land("moved/away"), land("odd \\ \n имя", 70'000)});
  std::string flipped = temporary.read("day/flipped");
  flipped[500] = static_cast<char>(flipped[500] ^ 1);
  temporary.write("day/flipped", flipped);
  temporary.write("day/truncated", temporary.read("day/truncated").substr(0, 999));
  temporary.write("day/longer", temporary.read("day/longer") + "x");
  std::filesystem::remove(temporary / "day/missing");
  std::filesystem::rename(temporary / "day/link", temporary / "day/target");
  std::filesystem::create_symlink("target", temporary / "day/link");
  std::filesystem::remove(temporary / "day/folder");
  std::filesystem::create_directory(temporary / "day/folder");
  std::filesystem::rename(temporary / "moved", temporary / "elsewhere");
  std::filesystem::create_directory_symlink("elsewhere", temporary / "moved");
  folder.faults().rule = failing(FileOperation::read, "day/locked", EACCES);
  const Report report = check();
  std::vector<std::pair<std::string, std::string>> states;
  for (const CheckedFile& file : report.files) {
    states.emplace_back(file.path, std::string{textOf(file.state)});
  }
  EXPECT_THAT(states, ElementsAre(Pair("day/flipped", "changed"), Pair("day/folder", "changed"),
                                  Pair("day/intact", "intact"), Pair("day/link", "changed"),
                                  Pair("day/locked", "unreadable"), Pair("day/longer", "changed"),
                                  Pair("day/missing", "missing"), Pair("day/truncated", "changed"),
                                  Pair("empty", "intact"), Pair("moved/away", "unreadable"),
                                  Pair("odd \\ \n имя", "intact")));
  EXPECT_EQ(report.files[0].sha256, sha256Hex(flipped));
  EXPECT_EQ(report.files[1].found, FileStatus::Type::folder);
  EXPECT_EQ(report.files[3].found, FileStatus::Type::link);
  EXPECT_EQ(report.files[4].errorCode, EACCES);
  EXPECT_EQ(report.files[5].size, 1001U);
  EXPECT_EQ(report.bytesRead, 2 * 1000U + 70'000U);  // a file whose size already differs is not
                                                     // read
  EXPECT_THAT(report.unknown,
              ElementsAre(UnknownFile{"day/target", 1000}, UnknownFile{"elsewhere/away", 1000}));
  EXPECT_TRUE(report.hasLosses());
  EXPECT_FALSE(report.isStopped);
}

TEST_F(CopyVerificationTest, unknownFiles_areNotThoseOfTheProgram) {
  record('a', {land("a.HEIC")});
  for (const char* name :
       {"b.HEIC", "day/b.HEIC", "phone-list.json", "phone-aaaaaaaa.json.damaged",
        "phone-aaaaaaaa.json.damaged-2", "SHA256SUMS", "day/SHA256SUMS", "day/c.HEIC.part",
        "phone-aaaaaaaa.json.part", ".Tavrix-staging/day/d.HEIC", ".Tavrix-staging.HEIC"}) {
    temporary.write(name, "x");
  }
  const Report report = check();
  EXPECT_THAT(report.unknown,
              ElementsAre(UnknownFile{".Tavrix-staging.HEIC", 1}, UnknownFile{"b.HEIC", 1},
                          UnknownFile{"day/SHA256SUMS", 1}, UnknownFile{"day/b.HEIC", 1},
                          UnknownFile{"phone-list.json", 1}));
  EXPECT_THAT(report.leftOvers, ElementsAre(".Tavrix-staging/day/d.HEIC", "day/c.HEIC.part",
                                            "phone-aaaaaaaa.json.part"));
  EXPECT_THAT(report.damagedRecords, IsEmpty());
  EXPECT_FALSE(report.hasLosses());
}

TEST_F(CopyVerificationTest, entriesWithoutDigest_neverSayMoreThanIsKnown) {
  FileRecord same = land("same.HEIC");
  FileRecord other = land("other.HEIC");
  FileRecord gone = land("gone.HEIC");
  FileRecord noDigest = land("noDigest.HEIC");
  same.sha256 = other.sha256 = gone.sha256 = std::nullopt;
  noDigest.sha256 = "12345";
  temporary.write("other.HEIC", "short");
  temporary.write("claimed.jpg", contentOf("claimed.jpg", 700));
  std::filesystem::remove(temporary / "gone.HEIC");
  record('a', {same, other, gone, noDigest, claim("never.HEIC", "100APPLE/never.HEIC"),
               claim("claimed.jpg", "100APPLE/claimed.HEIC")});
  // A file that was seen once is missing; a file that was only announced may never have landed.
  EXPECT_THAT(
      states(),
      ElementsAre(Pair("claimed.jpg", "withoutChecksum"), Pair("gone.HEIC", "missing"),
                  Pair("never.HEIC", "neverConfirmed"), Pair("noDigest.HEIC", "withoutChecksum"),
                  Pair("other.HEIC", "changed"), Pair("same.HEIC", "withoutChecksum")));
  EXPECT_EQ(check().bytesRead, 0U);
  const Report digested = check({2, true});
  EXPECT_EQ(digested.files.back().state, State::withoutChecksum);
  EXPECT_EQ(digested.files.back().sha256, sha256Hex(contentOf("same.HEIC", 1000)));
}

TEST_F(CopyVerificationTest, claimThatIsNotThere_isALoss) {
  record('a', {claim("1.HEIC", "1.HEIC"), claim("2.HEIC", "2.HEIC")});
  EXPECT_TRUE(check().hasLosses());
  EXPECT_EQ(check().count(State::neverConfirmed), 2U);
  temporary.write("1.HEIC", "1");
  temporary.write("2.HEIC", "2");
  EXPECT_FALSE(check().hasLosses());
  record('a', {});
  EXPECT_THAT(check().files, IsEmpty());
  EXPECT_FALSE(check().hasLosses());
}

TEST_F(CopyVerificationTest, twoPhones_theBetterClaimCounts) {
  const FileRecord landed = land("a.HEIC");
  FileRecord stale = landed;
  stale.size = 5;
  stale.sha256 = std::string(64, '0');
  FileRecord weak = stale;
  weak.sha256 = std::nullopt;
  record('a', {landed, land("b.HEIC")}, day + std::chrono::hours{1});
  record('b', {stale, land("c.HEIC")}, day);
  EXPECT_THAT(states(), ElementsAre(Pair("a.HEIC", "intact"), Pair("b.HEIC", "intact"),
                                    Pair("c.HEIC", "intact")));
  record('b', {weak}, day + std::chrono::hours{2});
  EXPECT_EQ(stateOf("a.HEIC"), "intact");
  record('b', {stale}, day + std::chrono::hours{2});
  EXPECT_EQ(stateOf("a.HEIC"), "changed");
}

TEST_F(CopyVerificationTest, pathsThatLeadOut_areNotFollowed) {
  const TemporaryFolder outside;
  outside.write("secret", "x");
  std::vector<FileRecord> files;
  for (const std::string& path :
       {"../" + lastName(outside.path()) + "/secret", outside / "secret", std::string{"a\0b", 3}}) {
    files.push_back({path, 1, sha256Hex("x"), "x", {}});
  }
  record('a', files);
  const Report report = check();
  EXPECT_EQ(report.count(State::unreadable), 3U);
  EXPECT_EQ(report.bytesRead, 0U);
}

TEST_F(CopyVerificationTest, damagedRecord_isNamedAndALoss) {
  record('a', {land("a.HEIC")});
  temporary.write("phone-bbbbbbbb.json", "{\"files\": [");
  const Report report = check();
  EXPECT_THAT(report.damagedRecords, ElementsAre("phone-bbbbbbbb.json"));
  EXPECT_TRUE(report.hasLosses());
}

TEST_F(CopyVerificationTest, recordNamedFileOfARecordsName_isAPhonesFile) {
  record('a', {land("phone-bbbbbbbb.json"), land("a.HEIC")});
  const Report report = check();
  EXPECT_EQ(report.count(State::intact), 2U);
  EXPECT_THAT(report.damagedRecords, IsEmpty());
  EXPECT_THAT(report.unknown, IsEmpty());
}

TEST_F(CopyVerificationTest, closedFolder_isNamedAndALoss) {
  record('a', {land("a.HEIC")});
  temporary.write("theirs/b.HEIC", "1");
  folder.faults().rule = failing(FileOperation::list, "theirs", EACCES);
  const Report report = check();
  EXPECT_THAT(report.unreadableFolders, ElementsAre(UnreadableFolder{"theirs", EACCES}));
  EXPECT_EQ(report.lostFiles(), 0U);
  EXPECT_TRUE(report.hasLosses());
}

TEST_F(CopyVerificationTest, earlierList_standsForDigestsThatNoRecordKnows) {
  FileRecord same = land("same.HEIC");
  FileRecord rotten = land("rotten.HEIC");
  FileRecord fresh = land("fresh.HEIC");
  const FileRecord proven = land("proven.HEIC");
  const FileRecord gone = land("gone.HEIC");
  const FileRecord outside{"../outside.HEIC", 1000, std::string(64, '1'), "x", {}};
  const ChecksumFile::Entry foreign{std::string(64, 'f'), "./mine/notes.txt"};
  const std::vector<ChecksumFile::Entry> earlier{foreign,
                                                 {*same.sha256, "./same.HEIC"},
                                                 {*rotten.sha256, "rotten.HEIC"},
                                                 {std::string(64, '0'), "gone.HEIC"},
                                                 {*proven.sha256, "never.HEIC"}};
  temporary.write("rotten.HEIC", contentOf("rot", 1000));
  temporary.write("proven.HEIC", contentOf("rot", 1000));
  std::filesystem::remove(temporary / "gone.HEIC");
  same.sha256 = rotten.sha256 = fresh.sha256 = std::nullopt;
  record('a', {same, rotten, fresh, proven, gone, outside, claim("never.HEIC", "never.HEIC")});
  const Options options{2, true, ChecksumMerge::digests(earlier)};
  EXPECT_THAT(states(options),
              ElementsAre(Pair("../outside.HEIC", "unreadable"),
                          Pair("fresh.HEIC", "withoutChecksum"), Pair("gone.HEIC", "missing"),
                          Pair("never.HEIC", "missing"), Pair("proven.HEIC", "changed"),
                          Pair("rotten.HEIC", "changed"), Pair("same.HEIC", "withoutChecksum")));
  using ChecksumFile::Entry;
  const auto list = ChecksumMerge::merged(check(options), earlier);
  EXPECT_THAT(
      list,
      ElementsAre(foreign, Entry{sha256Hex(contentOf("fresh.HEIC", 1000)), "fresh.HEIC"},
                  Entry{*gone.sha256, "gone.HEIC"}, Entry{*proven.sha256, "never.HEIC"},
                  Entry{*proven.sha256, "proven.HEIC"}, Entry{earlier[2].sha256, "rotten.HEIC"},
                  Entry{earlier[1].sha256, "same.HEIC"}));
  EXPECT_EQ(ChecksumMerge::merged(check({2, true, ChecksumMerge::digests(list)}), list), list);
}

TEST_F(CopyVerificationTest, stop_leavesTheRestNotReached) {
  std::vector<FileRecord> files;
  for (int i = 0; i < 50; ++i) files.push_back(land(std::to_string(i), 10'000));
  record('a', files);
  std::stop_source stop;
  // Readers wait for each other here, so that none runs ahead while another asks for the stop.
  std::mutex mutex;
  int reads = 0;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    const std::lock_guard lock(mutex);
    if (operation == FileOperation::read && path.find('.') == std::string::npos && ++reads == 20) {
      stop.request_stop();
    }
  };
  const Report report = check({2, false}, stop.get_token());
  EXPECT_TRUE(report.isStopped);
  EXPECT_EQ(report.count(State::intact) + report.count(State::notReached), 50U);
  EXPECT_GE(report.count(State::intact), 17U);
  EXPECT_GE(report.count(State::notReached), 29U);
}

TEST_F(CopyVerificationTest, progress_endsAtItsTotals) {
  std::vector<FileRecord> files{land("big", 3'000'000)};
  for (int i = 0; i < 20; ++i) files.push_back(land(std::to_string(i)));
  record('a', files);
  temporary.write("big", temporary.read("big").substr(0, 2'000'000) + std::string(1'000'000, 'x'));
  folder.faults().rule = failing(FileOperation::read, "7", EIO);
  TransferProgressSnapshot last;
  bool goesBack = false;
  verify(folder, listDestination(folder), {3, false}, [&](const auto& progress) {
    goesBack = goesBack || progress.bytesDone < last.bytesDone;
    last = progress;
  });
  EXPECT_FALSE(goesBack);
  EXPECT_EQ(last.filesDone, 21U);
  EXPECT_EQ(last.filesTotal, 21U);
  EXPECT_EQ(last.bytesDone, 3'020'000U);
  EXPECT_EQ(last.bytesTotal, 3'020'000U);
}

}  // namespace
}  // namespace tavrix::CopyVerification
