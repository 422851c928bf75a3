// Transfers on a machine whose power fails: at every step, with several kinds of loss.

#include <gmock/gmock.h>
#include <unistd.h>

#include "foundation/tests/support/LosingFolder.h"
#include "runs/FolderTransfer.h"
#include "transfer/LeftParts.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

/// Writes the result by a descriptor, as another process does.
class DescriptorConverter : public MediaConverter {
 public:
  static std::string resultOf(const std::string& content) { return "converted:" + content; }

  std::uint64_t convert(const MediaAsset&, const PlannedConversion&, Folder& folder,
                        const std::string& input, const std::string& output,
                        const ConversionProgress&, std::stop_token) override {
    const std::string result = resultOf(folder.readFile(input, 1'000'000));
    const FileDescriptor out = folder.createDescriptor(output);
    EXPECT_EQ(::write(out.number(), result.data(), result.size()),
              static_cast<ssize_t>(result.size()));
    return result.size();
  }
};

/// A phone with stills that are converted and stills that are not, and its transfers.
struct PowerFailure : testing::Test {
  TransferPlan planFor(const DestinationView& view) const {
    TransferOptions options;
    options.photoFormat = PhotoOutputFormat::jpeg;
    std::vector<MediaAsset> assets;
    for (const char* const name : {"IMG_1.JPG", "IMG_2.HEIC", "IMG_3.JPG", "IMG_4.MOV"}) {
      assets.push_back(assetOf(std::string{"100APPLE/"} + name, 3000));
    }
    return TransferPlanner::plan({groupOf("2026-05-20", assets)}, options, view);
  }
  /// Does what the program does for one transfer.
  RunOutcome transfer(Folder& destination) const {
    EXPECT_TRUE(destination.lock());
    DestinationMarker::removeLeftOvers(destination);
    auto content = Destination::read(destination, phone);
    const TransferPlan plan = planFor(content.view);
    LeftParts::remove(destination, content.view.filesOnDisk(), *content.marker);
    DescriptorConverter converter;
    // The record is saved after each file that lands.
    Instant now{std::chrono::hours{24 * 20600}};
    FolderTransfer job{{.phone = phone,
                        .converter = &converter,
                        .now = [&] { return now += std::chrono::seconds{30}; }},
                       destination,
                       std::move(content)};
    MemorySource source;
    return job.run(plan, source);
  }
  /// Requires that what has a final name is whole, and that what a record counts is there.
  void expectWhole(const Folder& destination) const {
    for (const PlannedFile& file : planFor({}).files) {
      if (!destination.status(file.relativePath)) continue;
      const std::string content = contentOf(std::string{file.asset.id()}, file.asset.sizeBytes());
      EXPECT_EQ(destination.readFile(file.relativePath, UINT64_MAX),
                isConverted(file.conversion) ? DescriptorConverter::resultOf(content) : content)
          << file.relativePath;
    }
    const auto marker = DestinationMarker::load(destination);
    EXPECT_THAT(marker.damaged, testing::IsEmpty());
    for (const auto& record : marker.records) {
      for (const auto& file : record.files) {
        EXPECT_TRUE(file.isClaim() || destination.status(file.path)) << file.path;
      }
    }
  }

  PhoneIdentity phone = snapshotPhone("iPhone");
};

TEST_F(PowerFailure, atAnyStepOfATransfer_leavesWholeFilesAndANextTransferCompletes) {
  auto expected = pathsOf(planFor({}));
  expected.insert(expected.end(), {DestinationMarker::fileName(phone.hash), "phone-records.txt"});
  forEachPowerFailure([](Folder&) {}, [&](Folder& destination) { transfer(destination); },
                      [&](Folder& destination, bool isDone) {
                        expectWhole(destination);
                        const RunOutcome outcome = transfer(destination);
                        EXPECT_EQ(outcome.status, TransferRecord::Status::completed);
                        if (isDone) {
                          EXPECT_EQ(outcome.report->copied, 0) << "all of it was synced";
                        }
                        expectWhole(destination);
                        EXPECT_THAT(filesIn(destination.path()),
                                    testing::UnorderedElementsAreArray(expected));
                      });
}

TEST_F(PowerFailure, syncThatFails_leavesItsFilesOutOfTheReport) {
  const TemporaryFolder temporary;
  FaultyFolder destination{openFolder(temporary.path())};
  // The data are synced, the names are not.
  int syncs = 0;
  destination.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::sync && path == "/" && ++syncs > 1) {
      throw FileError{operation, path, EIO};
    }
  };
  const RunOutcome outcome = transfer(destination);
  EXPECT_EQ(outcome.status, TransferRecord::Status::interrupted);
  EXPECT_GT(syncs, 1);
  EXPECT_EQ(outcome.report->copied, 0);
  EXPECT_EQ(outcome.report->bytesWritten, 0);
  EXPECT_THAT(outcome.report->files, testing::IsEmpty());
  const auto marker = DestinationMarker::load(destination);
  for (const auto& file : marker.record(phone.hash)->files) EXPECT_TRUE(file.isClaim());
  destination.faults().rule = {};
  EXPECT_EQ(transfer(destination).status, TransferRecord::Status::completed);
  expectWhole(destination);
}

}  // namespace
}  // namespace tavrix
