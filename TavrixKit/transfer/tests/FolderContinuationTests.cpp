#include "transfer/FolderContinuation.h"

#include <gmock/gmock.h>

#include "transfer/CopiesAgain.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using DestinationMarker::FileRecord;
using DestinationMarker::FolderMaking;
using DestinationMarker::FolderNote;
using testing::ElementsAre;
using testing::IsEmpty;

const FolderMaking now{{"uiMode", "events"}, {"timeZoneID", "Europe/Rome"}};
const FolderMaking before{{"uiMode", "byDate"}, {"granularity", "day"}};

/// Shots by folder: "A" to "Z" are the names of pictures.
struct Content {
  std::string folder;
  std::string shots;
  std::optional<FolderMaking> making{};
};

std::string idOf(char shot) { return std::string{"100APPLE/IMG_"} + shot + ".HEIC"; }

DestinationView destinationOf(const std::vector<Content>& content) {
  FilesOnDisk files;
  std::vector<FileRecord> records;
  std::vector<FolderNote> notes;
  for (const auto& [folder, shots, making] : content) {
    for (const char shot : shots) {
      const std::string path = folder + "/IMG_" + shot + ".HEIC";
      files.add(path, {1000, {}});
      records.push_back({path, 1000, std::nullopt, idOf(shot), {}});
    }
    if (making) notes.push_back({folder, *making});
  }
  const DestinationMarker::Marker marker{{{1, "me", "", "", {}, {}, records, notes}}};
  return {std::move(files), RecordedFiles{marker, "me"}};
}

std::vector<FolderNaming::Row> rowsOf(const std::vector<Content>& rows) {
  std::vector<FolderNaming::Row> result;
  for (const Content& row : rows) {
    std::vector<MediaAsset> assets;
    for (const char shot : row.shots) assets.push_back(assetOf(idOf(shot)));
    result.push_back({row.folder, groupOf(row.folder, assets).group});
  }
  return result;
}

/// The names are made with `now`; a group is named after its first shot: "n" and its letter.
FolderContinuation::Names names() {
  return {.making = now,
          .isShared = false,
          .clock = {},
          .isByHand = [](const MediaGroup& group) { return group.id.starts_with("hand"); },
          .nameOf =
              [](const MediaGroup& group) {
                return std::string{"n"} + group.bundles.front().original().name()[4];
              }};
}

struct Case {
  const char* name;
  std::vector<Content> destination;
  std::vector<Content> rows;
  std::vector<std::string> folders;
  std::string copied;  ///< the shots that the plan writes, in its order
};

class FolderContinuationTest : public testing::TestWithParam<Case> {};

TEST_P(FolderContinuationTest, folders_andWhatIsCopiedIntoThem) {
  const DestinationView destination = destinationOf(GetParam().destination);
  const auto folders =
      FolderContinuation::folders(rowsOf(GetParam().rows), names(), {}, destination);
  std::vector<std::string> found;
  for (const auto& folder : folders) found.push_back(folder.folderName);
  EXPECT_EQ(found, GetParam().folders);
  std::string copied;
  for (const auto& file : TransferPlanner::plan(folders, {}, destination).files) {
    copied += file.asset.name()[4];
  }
  EXPECT_EQ(copied, GetParam().copied);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FolderContinuationTest,
    testing::Values(
        Case{
            "grown", {{"Vatican", "ABC", now}}, {{"Rome", "ABCDEFGHIJK"}}, {"Vatican"}, "DEFGHIJK"},
        Case{"otherMaking", {{"Vatican", "ABC", before}}, {{"Rome", "ABCD"}}, {"Rome"}, "ABCD"},
        Case{"twoEventsThatBecameOne",
             {{"a", "ABC", now}, {"b", "DE", now}, {"c", "F", before}},
             {{"x", "ABCDEFG"}},
             {"x"},
             "FG"},
        Case{"twoEventsWithAMajority",
             {{"a", "ABC", now}, {"b", "DE", now}},
             {{"x", "ABCDEFG"}},
             {"a"},
             "FG"},
        Case{"eventThatBecameTwo",
             {{"a", "ABCDE", now}},
             {{"a", "AB"}, {"d", "CDEF"}},
             {"a (2)", "a"},
             "F"},
        Case{"earlierVersion", {{"nA", "AB"}}, {{"x", "ABC"}}, {"nA"}, "C"},
        Case{"earlierVersion_otherSettings", {{"y", "AB"}}, {{"x", "ABC"}}, {"x"}, "ABC"},
        Case{"numberedFolder", {{"nA (2)", "AB"}}, {{"x", "ABC"}}, {"nA (2)"}, "C"},
        Case{"nameByHand", {{"a", "ABC", now}}, {{"hand", "ABCD"}}, {"hand"}, "ABCD"},
        Case{"nameThatIsTaken",
             {{"a", "ABC", now}},
             {{"x", "ABCD"}, {"A", "EF"}, {"a (2)", "G"}},
             {"a", "A (3)", "a (2)"},
             "DEFG"},
        Case{"copiesInSeveralFolders",
             {{"a", "ABC", now}, {"b", "ABC", before}, {"c", "ABCD", now}},
             {{"x", "ABCDE"}},
             {"c"},
             "E"},
        Case{"copiesInSeveralFolders_ownName",
             {{"a", "ABC", now}, {"b", "ABCD", now}},
             {{"a", "ABCDE"}},
             {"a"},
             "E"},
        Case{"nameByHandOfAContinuedFolder",
             {{"hand", "ABC", now}},
             {{"x", "ABCD"}, {"hand", "E"}},
             {"x", "hand"},
             "DE"},
        Case{"dottedName", {{"n. (2)", "AB"}}, {{"x", "ABC"}}, {"x"}, "ABC"},
        Case{"ownFolderOfOtherMaking", {{"x", "AB", before}}, {{"x", "ABC"}}, {"x"}, "C"}),
    [](const auto& tested) { return tested.param.name; });

TEST(FolderContinuation, allIsWritten_ifThatIsWanted) {
  const DestinationView destination = destinationOf({{"Vatican", "ABC", now}, {"b", "D", now}});
  const auto folders =
      FolderContinuation::folders(rowsOf({{"Rome", "ABCDE"}}), names(), {}, destination);
  EXPECT_EQ(folders[0].templateName, "Rome");
  TransferOptions all;
  all.onlyNew = false;
  const auto plan = TransferPlanner::plan(folders, all, destination);
  EXPECT_EQ(plan.files.size(), 5U);
  for (const auto& file : plan.files)
    EXPECT_THAT(file.relativePath, testing::StartsWith("Vatican/"));
  EXPECT_EQ(copiesAgain(plan, now, destination).files, 0U);
}

TEST(CopiesAgain, filesUnderOtherNames_areCountedWithWhatHasChanged) {
  const DestinationView destination = destinationOf(
      {{"day", "ABC", before}, {"byHand", "D", now}, {"x", "E", now}, {"earlier", "F"}});
  const auto plan = TransferPlanner::plan(
      {groupOf("x", {assetOf(idOf('A')), assetOf(idOf('D')), assetOf(idOf('E')), assetOf(idOf('F')),
                     assetOf(idOf('G'))})},
      {}, destination);
  const CopiesAgain again = copiesAgain(plan, now, destination);
  EXPECT_EQ(again.files, 3U);
  EXPECT_EQ(again.before, before);
  EXPECT_THAT(again.folders, ElementsAre("byHand", "earlier"));
  EXPECT_THAT(copiesAgain({}, now, destination).folders, IsEmpty());
}

}  // namespace
}  // namespace tavrix
