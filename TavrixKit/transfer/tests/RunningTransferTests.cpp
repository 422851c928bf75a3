#include "transfer/RunningTransfer.h"

#include <gmock/gmock.h>

namespace tavrix {
namespace {

using CopyVerification::CheckedFile;
using CopyVerification::Report;
using CopyVerification::State;
using DestinationMarker::FileRecord;
using DestinationMarker::Marker;
using testing::ElementsAre;

FileRecord entry(const std::string& path, std::uint64_t size) {
  return {path, size, std::string(64, 'a'), "100APPLE/" + path, {}};
}
FileRecord claim(const std::string& path) { return {path, 0, std::nullopt, path, {}}; }

Marker markerOf(std::vector<FileRecord> running, std::vector<FileRecord> other, int saves) {
  const Instant then{std::chrono::hours{24}};
  return {{{1, std::string(64, '1'), "A", "iPhone", then, then + std::chrono::seconds{saves},
            std::move(running)},
           {1, std::string(64, '2'), "B", "iPhone", then, then - std::chrono::hours{1},
            std::move(other)}}};
}

TEST(RunningTransfer, whatItWrites_isNeitherLostNorForeign) {
  const Marker before =
      markerOf({entry("lost", 5), entry("again", 5), claim("soon")}, {claim("killed")}, 0);
  // Meanwhile it claimed two more, landed one of them under a number, and copied "again" afresh.
  const Marker now = markerOf({entry("again", 7), claim("soon"), claim("next"), entry("landed", 9)},
                              {claim("killed")}, 30);
  Report report;
  for (const auto& [path, state] :
       std::vector<std::pair<std::string, State>>{{"again", State::changed},
                                                  {"intact", State::intact},
                                                  {"killed", State::neverConfirmed},
                                                  {"lost", State::missing},
                                                  {"soon", State::neverConfirmed}}) {
    CheckedFile& file = report.files.emplace_back();
    file.path = path;
    file.state = state;
  }
  report.unknown = {{"landed", 9}, {"mine (2).JPG", 1}, {"next (2)", 2}, {"theirs", 1}};
  report.leftOvers = {"soon.part"};
  RunningTransfer::leaveOut(report, before, now);
  std::vector<State> states;
  for (const CheckedFile& file : report.files) states.push_back(file.state);
  EXPECT_THAT(states, ElementsAre(State::beingWritten, State::intact, State::neverConfirmed,
                                  State::missing, State::beingWritten));
  EXPECT_THAT(report.ofRunningTransfer, ElementsAre("landed", "next (2)", "soon.part"));
  EXPECT_EQ(report.unknown,
            (std::vector<CopyVerification::UnknownFile>{{"mine (2).JPG", 1}, {"theirs", 1}}));
  EXPECT_TRUE(report.leftOvers.empty());
  EXPECT_EQ(report.lostFiles(), 2U);
}

}  // namespace
}  // namespace tavrix
