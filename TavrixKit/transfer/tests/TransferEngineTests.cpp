#include "transfer/TransferEngine.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <thread>

#include "foundation/Digest.h"
#include "foundation/tests/support/RecordingLog.h"
#include "media/tests/MediaSourceContract.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class MemoryFiles : public SourceUnderTest {
 public:
  MediaSource& source() override { return source_; }
  void write(const MediaAsset& asset, const std::string& content) override {
    source_.bytes[std::string{asset.id()}] = content;
  }
  void remove(const MediaAsset& asset) override {
    source_.failing[std::string{asset.id()}] = SourceError::Kind::notFound;
  }
  void makeUnreadable(const MediaAsset& asset) override {
    source_.failing[std::string{asset.id()}] = SourceError::Kind::unreadable;
  }

 private:
  MemorySource source_;
};

INSTANTIATE_TEST_SUITE_P(MemorySource, MediaSourceContract,
                         testing::Values(MediaSourceContract::ParamType{
                             "files", [] { return std::make_unique<MemoryFiles>(); }}));
// A MemorySource has no files on the disk.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(StoredSourceContract);

/// A destination with an engine that commits every file at once.
class TransferEngineTest : public testing::Test {
 protected:
  TransferReport run(const TransferPlan& plan, std::stop_token stop = {}) {
    return TransferEngine{setup}.run(plan, source, destination, progress, std::move(stop));
  }
  std::string planned(const TransferPlan& plan, std::size_t index) const {
    return contentOf(std::string{plan.files[index].asset.id()},
                     plan.files[index].asset.sizeBytes());
  }
  std::string reasonOf(const TransferReport& report, std::size_t index) const {
    const auto* const failed = std::get_if<FileOutcome::Failed>(&report.files.at(index).kind);
    return failed == nullptr ? "" : failed->reason;
  }

  TemporaryFolder folder;
  FaultyFolder destination{openFolder(folder.path())};
  MemorySource source;
  TransferEngine::Setup setup{.limits = {.files = 1}};
  TransferEngine::Progress progress;
};

/// Returns a plan of one file with this id at this path.
TransferPlan planAt(const std::string& path, std::uint64_t size = 1000,
                    PlannedConversion conversion = {},
                    const std::string& id = "100APPLE/IMG_1.HEIC") {
  const MediaAsset asset = assetOf(id, size);
  const AssetBundle bundle = *BundleBuilder::bundle("b", {asset});
  return {{PlannedFile{asset, path, conversion, true, bundle}}, {}, {}, true};
}

TEST_F(TransferEngineTest, plannedFiles_land_withTheirBytesDatesAndDigests) {
  std::vector<std::pair<std::string, std::string>> digests;
  setup.landed = [&](const LandedFile& landed) {
    digests.emplace_back(landed.outcome.path.value(), landed.sha256.value_or(""));
  };
  const auto plan = planOf(3, 700'000);
  const auto report = run(plan);
  EXPECT_THAT(kindsOf(report), ElementsAre("copied", "copied", "copied"));
  EXPECT_EQ(filesIn(folder.path()), pathsOf(plan));
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(folder.read(pathsOf(plan)[i]), planned(plan, i));
    EXPECT_THAT(digests, Contains(std::pair{pathsOf(plan)[i], sha256Hex(planned(plan, i))}));
    EXPECT_EQ(destination.status(pathsOf(plan)[i])->modified, plan.files[i].asset.captureDate());
  }
  EXPECT_EQ(report.copied, 3U);
  EXPECT_EQ(report.copiedPictures, 3U);
  EXPECT_EQ(report.bytesCopied, 2'100'000U);
  EXPECT_EQ(report.bytesWritten, 2'100'000U);

  const auto again = run(plan);
  EXPECT_THAT(kindsOf(again), Each("alreadyThere"));
  EXPECT_EQ(again.resumedSkips, 3U);
  EXPECT_EQ(again.bytesCopied, 0U);
}

TEST_F(TransferEngineTest, pictureOfAnotherFormat_namedAsJpeg_landsWithAMark) {
  const std::string id = "100APPLE/IMG_1.JPEG";
  const auto isMisnamed = [&](std::string begin, const char* path = "d/IMG_1.jpg") {
    begin.resize(20, 'x');
    source.bytes[id] = begin;
    const auto report = run(planAt(path, begin.size(), {}, id));
    EXPECT_THAT(kindsOf(report), ElementsAre("copied")) << begin;
    EXPECT_EQ(folder.read(path), begin);
    destination.removeFile(path);
    return report.files[0].isMisnamed;
  };
  const std::string png = "\x89PNG\r\n\x1A\n";
  EXPECT_TRUE(isMisnamed(png));
  EXPECT_TRUE(isMisnamed("RIFF1234WEBP"));
  EXPECT_TRUE(isMisnamed(std::string(4, '\0') + "ftypheic"));
  EXPECT_FALSE(isMisnamed(png, "d/IMG_1.png"));
  EXPECT_FALSE(isMisnamed("\xFF\xD8\xFF\xE1"));
  EXPECT_FALSE(isMisnamed("RIFF1234WAVE"));
}

TEST_F(TransferEngineTest, progress_growsToItsTotals) {
  std::vector<TransferProgressSnapshot> seen;
  progress = [&](const TransferProgressSnapshot& snapshot) { seen.push_back(snapshot); };
  source.bytes["100APPLE/IMG_1001.HEIC"] = "short";
  run(planOf(3, 600'000));
  ASSERT_FALSE(seen.empty());
  for (std::size_t i = 1; i < seen.size(); ++i) {
    EXPECT_LE(seen[i - 1].filesDone, seen[i].filesDone);
    EXPECT_LE(seen[i - 1].bytesDone, seen[i].bytesDone);
  }
  EXPECT_EQ(seen.back().filesDone, 3U);
  EXPECT_EQ(seen.back().filesTotal, 3U);
  EXPECT_EQ(seen.back().bytesDone, seen.back().bytesTotal);
  EXPECT_EQ(seen.back().verifiedCount, 2U);
}

TEST_F(TransferEngineTest, wrongSizes_failTheirFileAlone) {
  setup.language = Language::russian;
  source.bytes["100APPLE/IMG_1000.HEIC"] = "short";
  source.bytes["100APPLE/IMG_1001.HEIC"] = std::string(5000, 'x');
  source.bytes["100APPLE/IMG_1002.HEIC"] = "";
  source.failing["100APPLE/IMG_1003.HEIC"] = SourceError::Kind::notFound;
  source.before = [](const MediaAsset& asset) {
    if (asset.name() == "IMG_1004.HEIC") throw std::runtime_error{"unexpected"};
  };
  const auto plan = planOf(6, 1000);
  const auto report = run(plan);
  EXPECT_THAT(kindsOf(report),
              ElementsAre("failed", "failed", "failed", "failed", "failed", "copied"));
  EXPECT_EQ(reasonOf(report, 0),
            "Сверка не прошла: IMG_1000.HEIC — ожидалось 1000 байт, получено 5");
  EXPECT_EQ(reasonOf(report, 1),
            "Сверка не прошла: IMG_1001.HEIC — ожидалось 1000 байт, получено больше");
  EXPECT_EQ(reasonOf(report, 3), "файла нет в источнике");
  EXPECT_EQ(report.failures.size(), 5U);
  EXPECT_THAT(report.failures[3], HasSubstr("IMG_1003.HEIC"));
  EXPECT_THAT(filesIn(folder.path()), ElementsAre("2026-05-20/IMG_1005.HEIC"));

  source = {};
  EXPECT_THAT(kindsOf(run(plan)),
              ElementsAre("copied", "copied", "copied", "copied", "copied", "alreadyThere"));
}

TEST_F(TransferEngineTest, sourceThatNeverEnds_isStoppedAtTheFirstByteTooMany) {
  class EndlessSource : public MediaSource {
   public:
    std::uint64_t pieces = 0;
    void download(const MediaAsset&, DownloadDestination& destination) override {
      for (const std::array<std::byte, 500> piece{}; pieces < 100; ++pieces)
        destination.append(piece);
    }
  } endless;
  const auto report = TransferEngine{setup}.run(planOf(1, 1000), endless, destination);
  EXPECT_EQ(endless.pieces, 2U);
  EXPECT_EQ(std::get<FileOutcome::Failed>(report.files[0].kind).code,
            (ReasonCode{.code = "tooManyBytes", .expectedBytes = 1000}));
  EXPECT_THAT(filesIn(folder.path()), IsEmpty());
}

TEST_F(TransferEngineTest, pathsThatLeadOut_writeNothing) {
  const TemporaryFolder outside;
  std::filesystem::create_directory_symlink(outside.path(), folder / "link");
  std::filesystem::create_directory_symlink("..", folder / "up");
  for (const char* path :
       {"../IMG_1.HEIC", "d/../../IMG_1.HEIC", "/etc/IMG_1.HEIC", "d//IMG_1.HEIC", "..", "d/..", "",
        "link/IMG_1.HEIC", "link/sub/IMG_1.HEIC", "up/IMG_1.HEIC"}) {
    const auto report = run(planAt(path));
    EXPECT_EQ(reasonOf(report, 0), "путь файла выходит за пределы папки назначения") << path;
    EXPECT_FALSE(report.files[0].path) << path;
  }
  EXPECT_THAT(filesIn(outside.path()), IsEmpty());
  EXPECT_THAT(filesIn(folder.path()), IsEmpty());
}

TEST_F(TransferEngineTest, namesThatAreNoNames_failTheirFileAlone) {
  for (const std::string& name :
       {std::string{"."}, std::string{".."}, std::string{"a/b.jpg"}, std::string{"a\0b", 3}}) {
    const auto plan = planAt("d/" + name, 1000, {}, "100APPLE/" + name);
    EXPECT_THAT(kindsOf(run(plan)), ElementsAre("failed")) << name;
  }
  EXPECT_THAT(filesIn(folder.path()), IsEmpty());
  for (const std::string& name : {std::string(255, 'n'), std::string{"tab\there\nline"},
                                  std::string{"\uFFFD"}, std::string{" "}}) {
    EXPECT_THAT(kindsOf(run(planAt("d/" + name))), ElementsAre("copied")) << name;
    EXPECT_TRUE(folder.has("d/" + name));
  }
}

TEST_F(TransferEngineTest, nameOfAnotherFile_isNeverOverwritten) {
  folder.write("d/IMG_1.HEIC", "somebody's own");
  folder.write("d/IMG_1 (2).HEIC", contentOf("other", 1000));
  std::filesystem::create_symlink("IMG_1.HEIC", folder / "d/IMG_1 (3).HEIC");
  std::filesystem::create_directory(folder / "d/IMG_1 (4).HEIC");
  const auto plan = planAt("d/IMG_1.HEIC");
  const auto report = run(plan);
  EXPECT_EQ(report.files[0].path, "d/IMG_1 (5).HEIC");
  EXPECT_EQ(report.files[0].name, "IMG_1 (5).HEIC");
  EXPECT_EQ(folder.read("d/IMG_1.HEIC"), "somebody's own");
  EXPECT_EQ(folder.read("d/IMG_1 (2).HEIC"), contentOf("other", 1000));
  EXPECT_EQ(folder.read("d/IMG_1 (5).HEIC"), planned(plan, 0));
  // The file with the same bytes is recognised under its number.
  EXPECT_EQ(run(plan).files[0].path, "d/IMG_1 (5).HEIC");
  EXPECT_THAT(kindsOf(run(plan)), ElementsAre("alreadyThere"));
}

TEST_F(TransferEngineTest, numberedName_neverTakesThePlaceOfAPlannedFile) {
  folder.write("d/IMG_1.HEIC", "somebody's own");
  auto plan = planAt("d/IMG_1.HEIC");
  plan.files.push_back(planAt("d/IMG_1 (2).HEIC", 1000, {}, "101APPLE/IMG_1.HEIC").files[0]);
  const auto report = run(plan);
  EXPECT_EQ(report.files[0].path, "d/IMG_1 (3).HEIC");
  EXPECT_EQ(report.files[1].path, "d/IMG_1 (2).HEIC");
  EXPECT_EQ(folder.read("d/IMG_1 (2).HEIC"), planned(plan, 1));
}

TEST_F(TransferEngineTest, leftOvers_ofAKilledRun_areReplaced) {
  const TemporaryFolder outside;
  outside.write("precious", "bytes");
  folder.write("d/IMG_1.HEIC.part", std::string(2000, 'x'));
  run(planAt("d/IMG_1.HEIC"));
  std::filesystem::create_symlink(outside / "precious", folder / "d/IMG_2.HEIC.part");
  run(planAt("d/IMG_2.HEIC"));
  EXPECT_EQ(outside.read("precious"), "bytes");
  EXPECT_THAT(filesIn(folder.path()), ElementsAre("d/IMG_1.HEIC", "d/IMG_2.HEIC"));
}

TEST_F(TransferEngineTest, cancel_inTheMiddle_reportsExactlyWhatIsThere) {
  for (const int threads : {1, 2}) {
    for (const std::size_t batch : {1U, 16U}) {
      const TemporaryFolder place;
      const auto target = openFolder(place.path());
      setup.limits.files = batch;
      source.threads = threads;
      std::stop_source stop;
      std::atomic<int> fetched = 0;
      source.before = [&](const MediaAsset&) {
        if (++fetched == 40) stop.request_stop();
      };
      try {
        TransferEngine{setup}.run(planOf(150, 20'000), source, *target, {}, stop.get_token());
        FAIL() << "not cancelled";
      } catch (const TransferEngine::Cancelled& cancelled) {
        EXPECT_GE(cancelled.report().copied, 30U);
        EXPECT_LT(cancelled.report().copied, 45U);
        std::vector<std::string> reported;
        for (const auto& outcome : cancelled.report().files) {
          reported.push_back(outcome.path.value());
          EXPECT_EQ(place.read(*outcome.path), contentOf(outcome.assetID, 20'000));
        }
        EXPECT_EQ(filesIn(place.path()), reported);
      }
    }
  }
}

/// Converts by putting "converted:" before the bytes, or fails.
class TextConverter : public MediaConverter {
 public:
  bool fails = false;
  bool writesNothing = false;
  std::uint64_t misreport = 0;

  std::uint64_t convert(const MediaAsset&, const PlannedConversion&, Folder& folder,
                        const std::string& input, const std::string& output,
                        const ConversionProgress&, std::stop_token) override {
    const std::string result = "converted:" + folder.readFile(input, 1'000'000);
    const auto out = folder.createFile(output);
    const std::string written = fails ? "half" : result;
    if (!writesNothing) out->append(std::as_bytes(std::span{written}));
    if (fails) throw ConversionError{ConversionFailure::failed};
    return result.size() + misreport;
  }
};

TEST_F(TransferEngineTest, conversion_succeeds_andKeepsTheDate) {
  TextConverter converter;
  setup.converter = &converter;
  const auto plan = planAt("d/IMG_1.jpg", 1000, planned_conversion::Jpeg{0.8});
  const auto report = run(plan);
  EXPECT_THAT(kindsOf(report), ElementsAre("copied"));
  EXPECT_EQ(folder.read("d/IMG_1.jpg"), "converted:" + planned(plan, 0));
  EXPECT_EQ(destination.status("d/IMG_1.jpg")->modified, plan.files[0].asset.captureDate());
  EXPECT_EQ(report.bytesCopied, 1000U);
  EXPECT_EQ(report.bytesWritten, 1010U);
  EXPECT_EQ(report.convertedSizeMismatches, 0U);
  EXPECT_THAT(kindsOf(run(plan)), ElementsAre("alreadyThere"));
  EXPECT_THAT(filesIn(folder.path()), ElementsAre("d/IMG_1.jpg"));

  converter.misreport = 1;
  EXPECT_EQ(run(planAt("d/IMG_2.jpg", 1000, planned_conversion::Jpeg{0.8})).convertedSizeMismatches,
            1U);
}

TEST_F(TransferEngineTest, volumeThatDatesFilesWhenTheyAreClosed_keepsTheDateOfTheShot) {
  destination.faults().closed = [&](const std::string& path) {
    openFolder(folder.path())->setModificationTime(path, Instant{std::chrono::hours{1}});
  };
  TextConverter converter;
  setup.converter = &converter;
  const auto copied = planOf(1, 10);
  const auto converted = planAt("d/IMG_1.jpg", 1000, planned_conversion::Jpeg{0.8});
  for (const TransferPlan& plan : {copied, converted}) {
    EXPECT_THAT(kindsOf(run(plan)), ElementsAre("copied"));
    EXPECT_EQ(destination.status(pathsOf(plan)[0])->modified, plan.files[0].asset.captureDate());
  }
}

TEST_F(TransferEngineTest, conversion_thatFails_keepsTheOriginalUnderItsName) {
  TextConverter failing;
  failing.fails = true;
  TextConverter empty;
  empty.writesNothing = true;
  for (MediaConverter* const converter :
       std::initializer_list<MediaConverter*>{nullptr, &failing, &empty}) {
    setup.converter = converter;
    const auto plan = planAt("d/IMG_1.jpg", 1000, planned_conversion::Jpeg{0.8});
    const auto report = run(plan);
    EXPECT_THAT(kindsOf(report), ElementsAre("keptOriginal"));
    const auto reason = std::get<FileOutcome::KeptOriginal>(report.files[0].kind).reason;
    EXPECT_EQ(reason,
              converter == &empty ? ConversionFailure::wrongResult : ConversionFailure::failed);
    EXPECT_EQ(report.files[0].path, "d/IMG_1.HEIC");
    EXPECT_THAT(report.conversionFallbacks, ElementsAre("IMG_1.HEIC"));
    EXPECT_EQ(report.copied, 0U);
    EXPECT_EQ(folder.read("d/IMG_1.HEIC"), planned(plan, 0));
    EXPECT_THAT(filesIn(folder.path()), ElementsAre("d/IMG_1.HEIC"));
  }
}

/// Holds each conversion until `awaited` of them are running, or one is stopped.
class MeetingConverter : public TextConverter {
 public:
  explicit MeetingConverter(int awaited) : awaited_(awaited) {}

  std::uint64_t convert(const MediaAsset& asset, const PlannedConversion& conversion,
                        Folder& folder, const std::string& input, const std::string& output,
                        const ConversionProgress& report, std::stop_token stop) override {
    std::unique_lock lock{mutex_};
    most = std::max(most, ++here_);
    changed_.notify_all();
    changed_.wait(lock, stop, [&] { return most >= awaited_; });
    --here_;
    if (stop.stop_requested()) throw ConversionError{ConversionFailure::failed};
    report(0.5);
    return TextConverter::convert(asset, conversion, folder, input, output, report, stop);
  }

  int most = 0;

 private:
  int awaited_;
  int here_ = 0;
  std::mutex mutex_;
  std::condition_variable_any changed_;
};

TransferPlan planOfConversions(std::size_t count) {
  TransferPlan plan = planOf(count, 1000, "d");
  for (PlannedFile& file : plan.files) {
    file.relativePath.replace(file.relativePath.rfind('.'), 5, ".jpg");
    file.conversion = planned_conversion::Jpeg{0.8};
  }
  return plan;
}

TEST_F(TransferEngineTest, conversions_areTwoAtOnce_whileOneFileIsFetched) {
  MeetingConverter converter{2};
  setup.converter = &converter;
  std::atomic<int> downloads = 0;
  std::atomic<int> mostDownloads = 0;
  source.before = [&](const MediaAsset&) {
    mostDownloads = std::max<int>(mostDownloads, ++downloads);
    std::this_thread::sleep_for(std::chrono::milliseconds{1});
    --downloads;
  };
  std::vector<double> fractions;
  progress = [&](const TransferProgressSnapshot& snapshot) {
    if (snapshot.stageFraction) {
      EXPECT_EQ(snapshot.stage, TransferStage::converting);
      fractions.push_back(*snapshot.stageFraction);
    }
  };
  const auto report = run(planOfConversions(12));
  EXPECT_EQ(report.copied, 12U);
  EXPECT_EQ(converter.most, 2);
  EXPECT_EQ(mostDownloads, 1);
  EXPECT_THAT(fractions, Contains(0.5));
}

TEST_F(TransferEngineTest, stop_duringAConversion_leavesNoFileAndBlamesNone) {
  MeetingConverter converter{100};
  setup.converter = &converter;
  std::stop_source stop;
  progress = [&](const TransferProgressSnapshot& snapshot) {
    if (snapshot.stageFraction) stop.request_stop();
  };
  EXPECT_THROW(run(planOfConversions(5), stop.get_token()), TransferEngine::Cancelled);
  EXPECT_THAT(filesIn(folder.path()), IsEmpty());
}

TEST_F(TransferEngineTest, keptOriginal_besideAPlannedFileOfThatName_takesANumber) {
  auto plan = planAt("d/IMG_1.jpg", 1000, planned_conversion::Jpeg{0.8});
  plan.files.push_back(planAt("d/IMG_1.HEIC", 1000, {}, "101APPLE/IMG_1.HEIC").files[0]);
  const auto report = run(plan);
  EXPECT_EQ(report.files[0].path, "d/IMG_1 (2).HEIC");
  EXPECT_EQ(folder.read("d/IMG_1.HEIC"), planned(plan, 1));
  // A name that differs from the file's own planned name only in letter case is not another file's.
  auto upper = planAt("e/IMG_2.mp4", 1000, planned_conversion::H264{}, "100APPLE/IMG_2.MP4");
  EXPECT_EQ(run(upper).files[0].path, "e/IMG_2.MP4");
}

TEST_F(TransferEngineTest, logLines_tellFailuresAndTheEnd) {
  RecordingLog log;
  setup.log = &log;
  source.bytes["100APPLE/IMG_1000.HEIC"] = "short";
  run(planOf(2, 1000));
  EXPECT_THAT(log.lines(),
              ElementsAre("FAIL <private>: ожидалось 1000 байт, получено 5",
                          "transfer finish: copied=1, resumed=0, bytes=1005, failures=1<private>"));
}

}  // namespace
}  // namespace tavrix
