#include "history/TransferRecordCoding.h"

#include <gmock/gmock.h>

#include <fstream>

#include "history/Verdict.h"
#include "history/tests/SampleRecords.h"

namespace tavrix {
namespace {

using Record = TransferRecord;
using Error = TransferRecord::RecordError;
using namespace TransferRecordCoding;

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

/// Returns the error of a text that must not decode, as "kind field".
std::string faultOf(const std::string& json) {
  try {
    decode(json);
    return "decoded";
  } catch (const Error& error) {
    switch (error.kind()) {
      case Error::Kind::newerSchema:
        return "newer " + std::to_string(error.version());
      case Error::Kind::notJson:
        return "not JSON";
      case Error::Kind::missingField:
        return "missing " + error.field();
      case Error::Kind::wrongValue:
        return "wrong " + error.field();
    }
  }
  return {};
}

TEST(TransferRecordCoding, record_writtenAndRead_isTheSame) {
  EXPECT_EQ(decode(encode(fullRecord())), fullRecord());
  Record empty;
  empty.startedAt = empty.finishedAt = *parseIso8601("2026-05-20T12:00:00Z");
  EXPECT_EQ(decode(encode(empty)), empty);
}

TEST(TransferRecordCoding, example_ofTheDocumentation_isRead) {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/history.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  const auto begin = text.find("```json\n");
  ASSERT_NE(begin, std::string::npos);
  const std::string json = text.substr(begin + 8, text.find("```", begin + 8) - begin - 8);
  const Record record = decode(json);
  EXPECT_EQ(record.totals, totalsOf(record.folders));
  EXPECT_EQ(encode(record), json);
}

TEST(TransferRecordCoding, everyEnumeration_keepsItsNames) {
  const std::string json = encode(fullRecord());
  for (const char* field :
       {R"("status": "completedWithFailures")", R"("kind": "livePhoto")", R"("role": "liveVideo")",
        R"("state": "onMac")", R"("state": "failed")", R"("outcome": "optimized")"}) {
    EXPECT_NE(json.find(field), std::string::npos) << field;
  }
  for (int i = 0; i < 5; ++i) {
    const auto state = static_cast<Record::PartState>(i);
    EXPECT_EQ(caseOf<Record::PartState>(textOf(state)), state);
    const auto filter = static_cast<Record::OutcomeFilter>(i);
    EXPECT_EQ(caseOf<Record::OutcomeFilter>(textOf(filter)), filter);
  }
  EXPECT_FALSE(caseOf<Record::Status>("Completed"));
}

TEST(TransferRecordCoding, newerSchema_isToldWhateverElseItHolds) {
  const std::string json = encode(fullRecord());
  const std::string newer = replaced(json, R"("schemaVersion": 2)", R"("schemaVersion": 3)");
  EXPECT_EQ(faultOf(newer), "newer 3");
  EXPECT_EQ(faultOf(replaced(newer, R"("role": "original")", R"("role": "hologram")")), "newer 3");
  EXPECT_EQ(faultOf(R"({"schemaVersion": 18446744073709551615})"),
            "newer " + std::to_string(INT64_MAX));
}

TEST(TransferRecordCoding, whatDoesNotFit_isNamedByItsPlace) {
  const std::string json = encode(fullRecord());
  EXPECT_EQ(faultOf(replaced(json, R"("role": "liveVideo")", R"("role": "hologram")")),
            "wrong folders[0].shots[0].files[1].role");
  EXPECT_EQ(faultOf(replaced(json, R"("outcome": "optimized")", R"("outcom": "optimized")")),
            "missing folders[1].shots[0].outcome");
  EXPECT_EQ(faultOf(replaced(json, R"("bytes": 1000)", R"("bytes": -1)")),
            "wrong folders[0].shots[0].files[0].bytes");
  EXPECT_EQ(faultOf(replaced(json, R"("onMac": 0)", R"("onMac": 7)")), "wrong totals.shots");
  EXPECT_EQ(faultOf(replaced(json, "ab000000-", "ab00000-")), "wrong id");
  EXPECT_EQ(faultOf(replaced(json, "12:01:00Z", "25:01:00Z")), "wrong finishedAt");
  EXPECT_EQ(faultOf(replaced(json, R"("folders": [)", R"("others": [)")), "missing folders");
  EXPECT_EQ(faultOf(replaced(json, R"("shots": [)", R"("others": [)")), "missing folders[0].shots");
  EXPECT_EQ(faultOf(R"({"schemaVersion": 2, "folders": [7]})"), "wrong folders[0]");
  for (const char* text : {"", "[]", "7", "null", "{", R"({"schemaVersion": 2}})"}) {
    EXPECT_EQ(faultOf(text), "not JSON") << text;
  }
  for (std::size_t length = 0; length + 2 < json.size(); length += 41) {
    EXPECT_EQ(faultOf(json.substr(0, length)), "not JSON") << length;
  }
}

TEST(TransferRecordCoding, fieldsThatAnOlderRecordLacks_haveTheirInitialValues) {
  Record record = fullRecord();
  record.options = {};
  std::string json = encode(record);
  const auto begin = json.find("\"options\": {") + 12;
  json.erase(begin, json.find('}', begin) - begin);
  EXPECT_EQ(decode(json).options, Record::Options{});
  EXPECT_FALSE(decode(replaced(json, R"("keptOriginal": true)", R"("others": true)"))
                   .folders[0]
                   .shots[0]
                   .files[0]
                   .keptOriginal);
}

TEST(TransferRecordCoding, olderForm_givesTheFolderThePlaceOfItsFirstShotThatHasOne) {
  const std::string json = R"({
    "schemaVersion": 1, "id": "AB000000-0000-0000-0000-000000000001",
    "startedAt": "2026-05-20T12:00:00Z", "finishedAt": "2026-05-20T12:01:00Z",
    "status": "completed", "phoneName": "iPhone", "destinationPath": "/photos",
    "options": {"mode": "byDate", "unknown": [{"deep": {}}]},
    "totals": {"shots": 3, "onMac": 3, "alreadyThere": 0, "failed": 0, "optimized": 0, "bytesWritten": 30},
    "folders": [
      {"name": "2026-05-20", "shots": [
        {"id": "a", "name": "a", "kind": "photo", "files": [], "outcome": "onMac", "place": null},
        {"id": "b", "name": "b", "kind": "photo", "files": [], "outcome": "onMac",
         "place": {"city": "Рим", "countryCode": "IT", "latitude": 41.9, "longitude": 12.5}},
        {"id": "c", "name": "c", "kind": "photo", "files": [], "outcome": "onMac",
         "place": {"city": "Милан", "latitude": 45.5, "longitude": 9.2}}]},
      {"name": "later", "place": {"names": {"en": "Oslo"}, "latitude": 59.9, "longitude": 10.7}, "shots": [
        {"id": "d", "name": "d", "kind": "photo", "files": [], "outcome": "onMac",
         "place": {"city": "Берген", "latitude": 60.4, "longitude": 5.3}}]},
      {"name": "nowhere", "shots": []}]})";
  const Record record = decode(json);
  ASSERT_EQ(record.folders.size(), 3U);
  EXPECT_EQ(record.folders[0].place, (Record::Place{{{"ru", "Рим"}}, "IT", 41.9, 12.5}));
  EXPECT_EQ(record.folders[1].place, (Record::Place{{{"en", "Oslo"}}, std::nullopt, 59.9, 10.7}));
  EXPECT_EQ(record.folders[2].place, std::nullopt);
  EXPECT_EQ(record.folders[0].shots.size(), 3U);
  EXPECT_EQ(record.id, idOf(0xAB));
  EXPECT_EQ(decode(encode(record)), record);
}

TEST(Verdict, everyEnding_isWordedInBothLanguages) {
  Record::Totals totals;
  totals.shots = 30;
  totals.failed = 22;
  const auto both = [&](Record::Status status) {
    return verdictText(Language::russian, status, totals) + "/" +
           verdictText(Language::english, status, totals);
  };
  EXPECT_EQ(both(Record::Status::completed),
            isMac ? "Все снимки на Mac/All snapshots are on the Mac"
                  : "Все снимки на компьютере/All snapshots are on this computer");
  EXPECT_EQ(both(Record::Status::completedWithFailures), "Не перенеслось: 22/Not transferred: 22");
  totals.failed = 0;
  EXPECT_EQ(both(Record::Status::completedWithFailures),
            "Источник прочитан не полностью/The source was read only in part");
  EXPECT_EQ(both(Record::Status::cancelled), "Перенос прерван/Transfer interrupted");
  EXPECT_EQ(both(Record::Status::interrupted), both(Record::Status::cancelled));

  const std::pair<std::uint64_t, std::string> counts[] = {
      {1, "1 снимок"},    {21, "21 снимок"},   {101, "101 снимок"}, {2, "2 снимка"},
      {22, "22 снимка"},  {5, "5 снимков"},    {11, "11 снимков"},  {14, "14 снимков"},
      {87, "87 снимков"}, {197, "197 снимков"}};
  for (const auto& [count, text] : counts) EXPECT_EQ(shotsText(Language::russian, count), text);
  EXPECT_EQ(shotsText(Language::english, 1), "1 snapshot");
  EXPECT_EQ(shotsText(Language::english, 21), "21 snapshots");
}

}  // namespace
}  // namespace tavrix
