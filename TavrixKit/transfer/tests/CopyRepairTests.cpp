#include "transfer/CopyRepair.h"

#include <gmock/gmock.h>

#include "transfer/tests/TestLibrary.h"

namespace tavrix::CopyRepair {
namespace {

using CopyVerification::CheckedFile;
using CopyVerification::State;
using DestinationMarker::FileRecord;
using testing::ElementsAre;
using testing::Pair;

const std::string digest(64, 'a');

/// Returns a picture of the folder "1" that the camera took at `taken`.
MediaAsset pictureOf(const std::string& name, std::uint64_t size, bool isOptimized, Instant taken) {
  return MediaAsset{"1/" + name,  name,        "1",          MediaKind::photo, size, taken,
                    std::nullopt, isOptimized, std::nullopt, std::nullopt,     taken};
}

CheckedFile checked(const std::string& path, State state) {
  CheckedFile file;
  file.path = path;
  file.state = state;
  return file;
}

TEST(CopyRepair, eachFile_isPlannedOrKeptForItsOwnReason) {
  const Instant day{std::chrono::hours{24}};
  const auto entry = [&](const std::string& path, std::optional<std::string> id,
                         std::uint64_t size = 1000, std::optional<std::string> sha256 = digest) {
    return FileRecord{path, size, std::move(sha256), std::move(id), {}};
  };
  FileRecord dated = entry("k dated.HEIC", "1/A.HEIC", 1000, std::nullopt);
  dated.date = ShotDate{day + std::chrono::minutes{1}, true};
  const FileRecord undated = entry("l undated.HEIC", "1/A.HEIC", 1000, std::nullopt);
  const std::vector<FileRecord> own{entry("a.HEIC", "1/A.HEIC"),
                                    entry("b zip.zip", std::nullopt),
                                    entry("c gone.HEIC", "1/GONE.HEIC"),
                                    entry("d converted.jpg", "1/A.HEIC", 600),
                                    entry("e reduced.JPG", "1/R.JPG", 5000),
                                    entry("f edited.HEIC", "1/A.HEIC", 999),
                                    entry("g link.HEIC", "1/A.HEIC"),
                                    entry("h locked.HEIC", "1/A.HEIC"),
                                    entry("i never.HEIC", "1/A.HEIC", 0, std::nullopt),
                                    entry("j renamed.jpg", "1/J.JPEG"),
                                    dated,
                                    undated,
                                    entry("m intact.HEIC", "1/A.HEIC")};
  const DestinationMarker::Marker marker{
      {{1, std::string(64, '1'), "A", "iPhone", day, day, own},
       {1, std::string(64, '2'), "B", "iPhone", day, day, {entry("z.HEIC", "1/A.HEIC")}}}};
  CopyVerification::Report report;
  for (const FileRecord& file : own) report.files.push_back(checked(file.path, State::missing));
  report.files.push_back(checked("z.HEIC", State::changed));
  report.files[6].state = State::changed;
  report.files[6].found = FileStatus::Type::link;
  report.files[7].state = State::unreadable;
  report.files[7].errorCode = EACCES;
  report.files[8].state = State::neverConfirmed;
  report.files[12].state = State::intact;
  const auto bundles =
      BundleBuilder::makeBundles({pictureOf("A.HEIC", 1000, false, day), assetOf("1/J.JPEG"),
                                  pictureOf("R.JPG", 100, true, day)});
  const Plan result = plan(report, marker, std::string(64, '1'), bundles);

  std::vector<std::pair<std::string, std::string>> planned;
  for (std::size_t i = 0; i < result.files.files.size(); ++i) {
    planned.emplace_back(result.files.files[i].relativePath, result.files.files[i].asset.id());
    EXPECT_EQ(result.records[i].path, result.files.files[i].relativePath);
  }
  EXPECT_THAT(planned, ElementsAre(Pair("a.HEIC", "1/A.HEIC"), Pair("j renamed.jpg", "1/J.JPEG"),
                                   Pair("l undated.HEIC", "1/A.HEIC")));
  std::vector<std::pair<std::string, std::string>> kept;
  for (const KeptFile& file : result.kept) kept.emplace_back(file.path, file.code().code);
  EXPECT_THAT(
      kept, ElementsAre(Pair("b zip.zip", "archive"), Pair("c gone.HEIC", "notInSource"),
                        Pair("d converted.jpg", "converted"), Pair("e reduced.JPG", "reducedCopy"),
                        Pair("f edited.HEIC", "otherContent"), Pair("g link.HEIC", "notFile"),
                        Pair("h locked.HEIC", "unreadable"), Pair("i never.HEIC", "neverConfirmed"),
                        Pair("k dated.HEIC", "otherContent"), Pair("z.HEIC", "otherPhone")));
}

}  // namespace
}  // namespace tavrix::CopyRepair
