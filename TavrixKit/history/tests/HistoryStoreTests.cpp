#include "history/HistoryStore.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <thread>

#include "foundation/tests/support/LosingFolder.h"
#include "foundation/tests/support/RecordingLog.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "history/HistoryIndex.h"
#include "history/tests/SampleRecords.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

struct HistoryStoreTest : testing::Test {
  TemporaryFolder place;
  std::unique_ptr<Folder> folder = openFolder(place.path());
  RecordingLog log;
  HistoryStore store{*folder, log};

  static std::vector<int> numbersOf(const std::vector<RecordSummary>& runs) {
    std::vector<int> numbers;
    for (const RecordSummary& run : runs) numbers.push_back(run.id.bytes[0]);
    return numbers;
  }
  std::vector<int> listed(const HistoryQuery& query = {}) { return numbersOf(store.runs(query)); }
  std::vector<int> touching(const std::string& path) {
    std::vector<int> numbers;
    for (const auto& [run, file] : store.runsTouching(path)) numbers.push_back(run.id.bytes[0]);
    return numbers;
  }
};

TEST_F(HistoryStoreTest, record_readByANewStore_isTheSame) {
  store.add(fullRecord());
  RecordingLog other;
  HistoryStore reopened{*folder, other};
  EXPECT_EQ(reopened.record(fullRecord().id), fullRecord());
  EXPECT_THAT(reopened.runs(), ElementsAre(summaryOf(fullRecord())));
  EXPECT_EQ(reopened.record(idOf(7)), std::nullopt);
}

TEST_F(HistoryStoreTest, runs_areNewestFirstByTheMillisecond) {
  store.add(smallRecord(1, "2026-05-20T12:00:00Z"));
  store.add(smallRecord(2, "2026-05-20T12:00:00.001Z"));
  store.add(smallRecord(3, "0999-05-20T12:00:00Z"));
  EXPECT_THAT(listed(), ElementsAre(2, 1, 3));
  store.add(smallRecord(4, "2026-05-20T12:00:00.999Z"));
  EXPECT_THAT(listed(), ElementsAre(4, 2, 1, 3)) << "what is not in the index yet is listed too";
}

TEST_F(HistoryStoreTest, queries_chooseRuns) {
  TransferRecord first = smallRecord(1, "2026-05-20T12:00:00Z", "/photos");
  first.phoneHash = std::string(64, 'c');
  TransferRecord second = smallRecord(2, "2026-05-21T12:00:00Z", "/photos/later");
  second.phoneName = "Другой";
  second.folders[0].shots[0].outcome = TransferRecord::Outcome::failed;
  second.folders[0].shots[0].files[0].assetID = "100APPLE/IMG_2.HEIC";
  second.totals = totalsOf(second.folders);
  store.add(first);
  store.add(second);
  EXPECT_THAT(listed({.phone = "iPhone"}), ElementsAre(1));
  EXPECT_THAT(listed({.phone = std::string(64, 'c')}), ElementsAre(1));
  EXPECT_THAT(listed({.destinationPath = "/photos/later"}), ElementsAre(2));
  EXPECT_THAT(listed({.outcome = TransferRecord::OutcomeFilter::failed}), ElementsAre(2));
  EXPECT_THAT(listed({.outcome = TransferRecord::OutcomeFilter::optimized}), IsEmpty());

  EXPECT_THAT(touching("/photos/2026-05-20/IMG_1.HEIC"), ElementsAre(1));
  EXPECT_THAT(touching("/photos/later/2026-05-20/IMG_1.HEIC"), ElementsAre(2));
  EXPECT_THAT(touching("/photos/2026-05-20"), IsEmpty());
  EXPECT_THAT(touching("/photosx/2026-05-20/IMG_1.HEIC"), IsEmpty());
  EXPECT_EQ(store.runsOfAsset("100APPLE/IMG_2.HEIC").at(0).run.id, idOf(2));
  EXPECT_THAT(store.runsOfAsset("100APPLE/IMG_2.HEIC", {.phone = "iPhone"}), IsEmpty());
}

TEST_F(HistoryStoreTest, outcome_choosesRunsAndTheirFiles) {
  using Outcome = TransferRecord::Outcome;
  using Filter = TransferRecord::OutcomeFilter;
  const std::vector<std::pair<Outcome, Filter>> pairs{{Outcome::onMac, Filter::onMac},
                                                      {Outcome::alreadyThere, Filter::alreadyThere},
                                                      {Outcome::failed, Filter::failed},
                                                      {Outcome::optimized, Filter::optimized}};
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    TransferRecord record = smallRecord(static_cast<int>(i), "2026-05-20T12:00:00Z");
    record.folders[0].shots[0].outcome = pairs[i].first;
    record.totals = totalsOf(record.folders);
    store.add(record);
  }
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    EXPECT_THAT(listed({.outcome = pairs[i].second}), ElementsAre(static_cast<int>(i)));
  }
  // A run of which one shot failed and another one arrived.
  TransferRecord mixed = smallRecord(9, "2026-05-21T12:00:00Z");
  TransferRecord::Shot other = mixed.folders[0].shots[0];
  other.outcome = Outcome::failed;
  other.files[0].name = "other";
  mixed.folders[0].shots.push_back(other);
  mixed.totals = totalsOf(mixed.folders);
  store.add(mixed);
  const auto failed = store.runsOfAsset(other.files[0].assetID, {.outcome = Filter::failed});
  ASSERT_EQ(failed.size(), 2U);
  EXPECT_EQ(failed[0].run.id, idOf(9));
  EXPECT_EQ(failed[0].file.name, "other");
}

TEST_F(HistoryStoreTest, destinationAtTheRootOrWithASlash_holdsItsFiles) {
  store.add(smallRecord(1, "2026-05-20T12:00:00Z", "/"));
  store.add(smallRecord(2, "2026-05-21T12:00:00Z", "/photos//"));
  EXPECT_THAT(touching("/2026-05-20/IMG_1.HEIC"), ElementsAre(1));
  EXPECT_THAT(touching("/photos/2026-05-20/IMG_1.HEIC"), ElementsAre(2));
}

TEST_F(HistoryStoreTest, damagedAndNewerRecords_arePassedOverAndLeftAlone) {
  store.add(smallRecord(1, "2026-05-20T12:00:00Z"));
  store.add(smallRecord(2, "2026-05-21T12:00:00Z"));
  const std::string whole = TransferRecordCoding::encode(smallRecord(3, "2026-05-22T12:00:00Z"));
  const auto at = whole.find("\"schemaVersion\": 2");
  const std::string newer = std::string{whole}.replace(at, 18, "\"schemaVersion\": 3");
  const std::string newerName = "2026-05-22T12-00-00.000Z-" + idOf(3).text() + ".json";
  const std::string damagedName = "2026-05-23T12-00-00.000Z-" + idOf(4).text() + ".json";
  const std::string oddName = "2026-05-22T12-00-00.000Z-" + idOf(6).text() + ".json";
  std::string odd = TransferRecordCoding::encode(smallRecord(6, "2026-05-22T12:00:00Z"));
  odd.replace(odd.find("\"original\""), 10, "\"weird\"");
  place.write(oddName, odd);
  place.write(newerName, newer);
  place.write(damagedName, whole.substr(0, whole.size() / 2));
  const auto lines = UnorderedElementsAre("history: a record of a newer schema skipped",
                                          "history: a record could not be read: <private>",
                                          "history: a record could not be read: <private>");
  for (int look = 0; look < 2; ++look) {
    log.clear();
    EXPECT_THAT(listed(), ElementsAre(2, 1));
    EXPECT_THAT(log.lines(), lines) << "look " << look;
  }
  EXPECT_THROW(store.record(idOf(3)), TransferRecord::RecordError);
  EXPECT_EQ(place.read(newerName), newer);
  // Files with other names, and a record under an id that is not its own.
  place.write("old-" + idOf(3).text() + ".json", whole);
  place.write("2026-05-24T12-00-00.000Z-" + idOf(5).text() + ".json", whole);
  EXPECT_THAT(listed(), ElementsAre(2, 1));
  EXPECT_TRUE(store.remove(idOf(4))) << "a damaged record can be deleted";
  EXPECT_FALSE(place.has(damagedName));
}

TEST_F(HistoryStoreTest, index_neverHidesWhatTheFilesSay) {
  store.add(smallRecord(1, "2026-05-20T12:00:00Z"));
  store.add(smallRecord(2, "2026-05-21T12:00:00Z"));
  EXPECT_THAT(listed(), ElementsAre(2, 1));
  const std::string index = place.read(HistoryIndex::fileName);
  for (const std::string& damaged :
       {std::string{}, std::string{"[7]"}, std::string{"{}"}, index.substr(0, index.size() / 2)}) {
    place.write(HistoryIndex::fileName, damaged);
    EXPECT_THAT(listed(), ElementsAre(2, 1)) << damaged;
    EXPECT_EQ(place.read(HistoryIndex::fileName), index) << "made again";
  }
  std::filesystem::remove(place / HistoryIndex::fileName);
  std::filesystem::create_directory(place / HistoryIndex::fileName);
  EXPECT_THAT(listed(), ElementsAre(2, 1)) << "an index that cannot be had is done without";
  std::filesystem::remove(place / HistoryIndex::fileName);

  EXPECT_TRUE(store.remove(idOf(1)));
  EXPECT_FALSE(store.remove(idOf(1)));
  EXPECT_THAT(listed(), ElementsAre(2));
}

TEST_F(HistoryStoreTest, index_saysOfARunWhatItsRecordSays) {
  store.add(fullRecord());
  for (int look = 0; look < 2; ++look) {
    EXPECT_THAT(store.runs(), ElementsAre(summaryOf(fullRecord()))) << "look " << look;
  }
  // A change that keeps the size of the file.
  EXPECT_TRUE(store.update(fullRecord().id, [](TransferRecord record) {
    record.phoneHash = std::string(64, 'b');
    return record;
  }));
  EXPECT_EQ(store.runs().at(0).phoneHash, std::string(64, 'b'));
}

TEST_F(HistoryStoreTest, removedRun_isNeitherInTheFolderNorInTheIndex) {
  store.add(fullRecord());
  store.runs();
  FaultyFolder watched{openFolder(place.path())};
  std::vector<std::pair<FileOperation, std::string>> operations;
  watched.faults().rule = [&](FileOperation operation, const std::string& path) {
    operations.emplace_back(operation, path);
  };
  HistoryStore removing{watched, log};
  EXPECT_TRUE(removing.remove(fullRecord().id));
  EXPECT_EQ(operations.back(), std::pair(FileOperation::sync, std::string{}))
      << "a power cut does not bring it back";
  EXPECT_THAT(listed(), IsEmpty());
  EXPECT_THAT(place.read(HistoryIndex::fileName),
              testing::Not(testing::HasSubstr(fullRecord().id.text())));
}

TEST_F(HistoryStoreTest, placeNames_areAddedLater) {
  store.add(fullRecord());
  store.runs();
  const auto named = [](TransferRecord record) {
    record.folders.at(0).place->names["it"] = "Roma";
    return record;
  };
  EXPECT_TRUE(store.update(fullRecord().id, named));
  EXPECT_EQ(store.record(fullRecord().id), named(fullRecord()));
  EXPECT_THAT(store.runs(), ElementsAre(summaryOf(fullRecord())));
  EXPECT_FALSE(store.update(idOf(9), named));
}

TEST_F(HistoryStoreTest, failedWrite_leavesNothingBehind) {
  for (const FileOperation operation :
       {FileOperation::create, FileOperation::write, FileOperation::sync, FileOperation::close,
        FileOperation::rename}) {
    FaultyFolder faulty{openFolder(place.path())};
    faulty.faults().rule = [&](FileOperation asked, const std::string& path) {
      if (asked == operation && path.find(".json") != std::string::npos) {
        throw FileError{operation, path, ENOSPC};
      }
    };
    HistoryStore failing{faulty, log};
    EXPECT_THROW(failing.add(smallRecord(1, "2026-05-20T12:00:00Z")), FileError);
    EXPECT_THAT(folder->names(), IsEmpty());
  }
  place.write("2026-05-21T12-00-00.000Z-x.json.part", "left by a process that was killed");
  store.add(smallRecord(2, "2026-05-21T12:00:00Z"));
  EXPECT_THAT(listed(), ElementsAre(2));
  EXPECT_THAT(folder->names(),
              ElementsAre("2026-05-21T12-00-00.000Z-" + idOf(2).text() + ".json", "index.json"));
}

TEST_F(HistoryStoreTest, powerThatFails_losesNoRecordThatWasKept) {
  const auto numbers = [this](Folder& folder) {
    HistoryStore left{folder, log};
    std::vector<Uuid> ids;
    for (const RecordSummary& run : left.runs()) {
      EXPECT_TRUE(left.record(run.id).has_value());
      ids.push_back(run.id);
    }
    return ids;
  };
  bool isAdded = false;
  forEachPowerFailure(
      [this](Folder& folder) {
        HistoryStore{folder, log}.add(smallRecord(1, "2026-05-20T12:00:00Z"));
        folder.syncVolume();
      },
      [&](Folder& folder) {
        HistoryStore failing{folder, log};
        isAdded = false;
        failing.add(smallRecord(2, "2026-05-21T12:00:00Z"));
        isAdded = true;
        failing.runs();  // writes the index
        failing.update(idOf(1), [](TransferRecord record) {
          record.phoneName = "renamed";
          return record;
        });
      },
      [&](Folder& folder, bool isDone) {
        const std::vector<Uuid> ids = numbers(folder);
        EXPECT_THAT(ids, testing::Contains(idOf(1)));
        EXPECT_TRUE(!isAdded || ids == (std::vector{idOf(2), idOf(1)}));
        HistoryStore left{folder, log};
        EXPECT_TRUE(!isDone || left.record(idOf(1))->phoneName == "renamed");
        HistoryStore{folder, log}.add(smallRecord(3, "2026-05-22T12:00:00Z"));
        EXPECT_THAT(numbers(folder), testing::Contains(idOf(3)));
      });
}

TEST_F(HistoryStoreTest, severalWritersAtOnce_loseNothing) {
  constexpr int each = 25;
  const auto work = [&](int first) {
    const auto own = openFolder(place.path());
    RecordingLog quiet;
    HistoryStore writer{*own, quiet};
    for (int i = first; i < first + each; ++i) {
      writer.add(smallRecord(i, "2026-05-20T12:00:00Z"));
      writer.runs();
    }
  };
  std::thread first{work, 0};
  std::thread second{work, 100};
  first.join();
  second.join();
  EXPECT_EQ(listed().size(), 2U * each);
  EXPECT_THAT(log.lines(), IsEmpty());
}

}  // namespace
}  // namespace tavrix
