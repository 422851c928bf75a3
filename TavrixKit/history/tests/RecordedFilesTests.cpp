#include "history/RecordedFiles.h"

#include <gmock/gmock.h>

#include "foundation/tests/support/TemporaryFolder.h"
#include "history/tests/SampleRecords.h"
#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Status = TransferRecord::Status;
using State = TransferRecord::PartState;

const std::string phone(64, 'a');
const std::string still = "100APPLE/IMG_1.HEIC";

struct RecordedFiles : testing::Test {
  /// Adds the record of a run that has copied the still.
  void add(int number, const std::string& startedAt,
           const std::function<void(TransferRecord&)>& change = {}) {
    TransferRecord record = smallRecord(number, startedAt);
    record.phoneHash = phone;
    record.options.photoFormat = record.options.videoFormat = "original";
    TransferRecord::Shot& shot = record.folders[0].shots[0];
    shot.captureDate = parseIso8601("2026-05-19T12:00:00Z");
    if (change) change(record);
    store.add(record);
  }

  StringSet found(std::uint64_t sizeBytes = 10,
                  const std::optional<std::string>& captureDate = "2026-05-19T12:00:00Z") {
    const std::string name = "IMG_1.HEIC";
    return recordedFiles(
        store, phone,
        {*BundleBuilder::bundle("100APPLE/IMG_1",
                                {{still,
                                  name,
                                  "100APPLE",
                                  MediaKind::photo,
                                  sizeBytes,
                                  captureDate ? parseIso8601(*captureDate) : std::nullopt,
                                  std::nullopt,
                                  false,
                                  {},
                                  {}}})});
  }

  TemporaryFolder place;
  std::unique_ptr<Folder> folder = openFolder(place.path());
  HistoryStore store{*folder, silentLog()};
};

TEST_F(RecordedFiles, finishedRunsOfThePhone_count) {
  add(1, "2026-05-20T01:00:00Z", [](auto& run) { run.status = Status::cancelled; });
  add(2, "2026-05-20T02:00:00Z", [](auto& run) { run.status = Status::interrupted; });
  add(3, "2026-05-20T03:00:00Z", [](auto& run) { run.phoneHash = std::string(64, 'b'); });
  add(4, "2026-05-20T04:00:00Z",
      [](auto& run) { run.folders[0].shots[0].files[0].state = State::failed; });
  EXPECT_THAT(found(), IsEmpty());
  EXPECT_EQ(finishedRuns(store, phone).size(), 1U);
  // A newer run that does not mention the file takes nothing away from an older one.
  add(5, "2026-05-20T00:30:00Z", [](auto& run) {
    run.status = Status::completedWithFailures;
    run.folders[0].shots[0].files[0].state = State::alreadyThere;
  });
  EXPECT_THAT(found(), UnorderedElementsAre(still));
}

TEST_F(RecordedFiles, anotherPictureOfTheSameName_isNotTheRecordedOne) {
  add(1, "2026-05-20T01:00:00Z");
  EXPECT_THAT(found(10, "2026-05-19T12:00:01Z"), IsEmpty());
  EXPECT_THAT(found(11), IsEmpty());
  EXPECT_THAT(found(0), UnorderedElementsAre(still)) << "a size that is not known";
  add(2, "2026-05-20T02:00:00Z", [](auto& run) { run.options.photoFormat = "jpeg"; });
  EXPECT_THAT(found(11), UnorderedElementsAre(still))
      << "the size of the converted file is its own";
}

TEST_F(RecordedFiles, pictureWithoutADate_isFoundByItsName) {
  add(1, "2026-05-20T01:00:00Z",
      [](auto& run) { run.folders[0].shots[0].captureDate = std::nullopt; });
  EXPECT_THAT(found(10, std::nullopt), UnorderedElementsAre(still));
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(RecordedFiles, recordThatTellsNoSize_countsForAnySize) {
  add(1, "2026-05-20T01:00:00Z", [](auto& run) { run.folders[0].shots[0].files[0].bytes = 0; });
  EXPECT_THAT(found(), UnorderedElementsAre(still));
}

TEST_F(RecordedFiles, damagedRecord_isPassedOver) {
  add(1, "2026-05-20T01:00:00Z");
  add(2, "2026-05-20T02:00:00Z");
  folder->visitAll([&](const std::string& name, const FileStatus&) {
    if (name.starts_with("2026-05-20T02")) place.write(name, "{");
  });
  EXPECT_THAT(found(), UnorderedElementsAre(still));
}

}  // namespace
}  // namespace tavrix
