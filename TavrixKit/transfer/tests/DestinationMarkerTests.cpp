#include "transfer/DestinationMarker.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "transfer/tests/TestLibrary.h"

namespace tavrix::DestinationMarker {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const Instant day = *parseIso8601("2026-05-20T12:00:00Z");
const Instant nextDay = *parseIso8601("2026-05-21T08:30:00.250Z");
const std::string hash(64, 'a');
const std::string file = "phone-aaaaaaaa.json";

PhoneRecord sample() {
  return {1,
          hash,
          "iPhone «Маши»",
          "iPhone",
          day,
          nextDay,
          {{"2026-05-20/IMG_1.HEIC", 1000, std::string(64, 'f'), "100APPLE/IMG_1.HEIC", "cloud/1"},
           {"2026-05-20/IMG_2 \"x\".MOV", UINT64_MAX, std::nullopt, std::nullopt, std::nullopt,
            std::nullopt, ShotDate{nextDay, true}},
           {"2026-05-20/IMG_3.HEIC", 1, std::nullopt, "3", std::nullopt, "jpeg",
            ShotDate{nextDay, false}},
           {"2026-05-20/IMG_4.HEIC", 1, std::nullopt, "4", std::nullopt, std::nullopt,
            ShotDate{nextDay, true, true}}},
          {{"2026-05-20", FolderMaking{{"locale", "ru_RU"}, {"uiMode", "events"}}},
           {"2026-05-20 — Рим", FolderMaking{{"locale", "en_US"}, {"uiMode", "events"}}},
           {"2026-05-21", FolderMaking{{"locale", "ru_RU"}, {"uiMode", "events"}}}}};
}

TEST(DestinationMarker, record_writtenAndRead_isTheSame) {
  EXPECT_EQ(decode(encode(sample())), sample());
  PhoneRecord empty = sample();
  empty.files.clear();
  EXPECT_EQ(decode(encode(empty)), empty);
}

/// Returns what decode() returns, or the version that it refuses.
std::pair<std::optional<PhoneRecord>, std::int64_t> decoded(const std::string& text) {
  try {
    return {decode(text), 0};
  } catch (const MarkerError& error) {
    return {std::nullopt, error.version()};
  }
}

TEST(DestinationMarker, ownForm_isReadAsAnyOtherForm) {
  const PhoneRecord record = sample();
  const std::string own = encode(record);
  // With a space in front of it the text goes to the general reader.
  ASSERT_EQ(decode(" " + own), record);
  ASSERT_EQ(decode(own), record);
  for (std::size_t at = 0; at < own.size(); ++at) {
    for (const char c : {'"', '\\', '\n', '0', '9', '-', 'Z', '}', 'n', '\x01', '\xff'}) {
      std::string changed = own;
      changed[at] = c;
      ASSERT_EQ(decoded(changed), decoded(" " + changed)) << c << " at " << at;
    }
    ASSERT_EQ(decoded(own.substr(0, at)), decoded(" " + own.substr(0, at))) << at;
  }
}

TEST(DestinationMarker, example_ofTheDocumentation_isRead) {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/marker.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  const auto begin = text.find("```json\n");
  ASSERT_NE(begin, std::string::npos);
  const std::string json = text.substr(begin + 8, text.find("```", begin + 8) - begin - 8);
  const auto record = decode(json);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->files.size(), 2U);
  EXPECT_EQ(encode(*record), json);
}

TEST(DestinationMarker, damagedText_countsAsAbsent) {
  const std::string whole = encode(sample());
  for (std::size_t length = 0; length + 2 < whole.size(); length += 7) {
    EXPECT_FALSE(decode(whole.substr(0, length))) << length;
  }
  for (const char* text : {"[]", "{}", "null", "1", R"({"schemaVersion":1})", R"({"files":{}})"}) {
    EXPECT_FALSE(decode(text)) << text;
  }
  const auto with = [&](const std::string& from, const std::string& to) {
    std::string text = whole;
    return text.replace(text.find(from), from.size(), to);
  };
  EXPECT_FALSE(decode(with("1000", "-1")));
  EXPECT_FALSE(decode(with("1000", "1.5")));
  EXPECT_FALSE(decode(with("\"size\": 1000", "\"length\": 1000")));
  EXPECT_FALSE(decode(with("2026-05-20T12:00:00Z", "yesterday")));
  EXPECT_TRUE(decode(with("\"label\"", "\"later\": {\"a\": [1, {\"path\": 2}]},\n  \"label\"")));
}

TEST(DestinationMarker, newerVersion_isNotReadAndNotOverwritten) {
  const TemporaryFolder folder;
  const std::string newer = R"({"schemaVersion": 2, "files": "elsewhere", "phoneHash": 7})";
  folder.write(file, newer);
  const auto destination = openFolder(folder.path());
  EXPECT_THROW(load(*destination), MarkerError);
  EXPECT_THROW(save(*destination, sample()), MarkerError);
  EXPECT_EQ(folder.read(file), newer);
  EXPECT_THAT(filesIn(folder.path()), ElementsAre(file));
}

TEST(DestinationMarker, filesWithNamesLikeARecords_areLeftAlone) {
  const TemporaryFolder folder;
  const auto destination = openFolder(folder.path());
  save(*destination, sample());
  PhoneRecord copy = sample();
  copy.files.clear();
  const std::vector<std::pair<std::string, std::string>> others{
      {"phone-contacts.json", R"({"schemaVersion": 2})"},
      {"phone-aaaaaaaa 2.json", encode(copy)},
      {"phone-AAAAAAAA.json", encode(copy)},
      {"phone-contacts.json.part", "half"},
      {"phone-contacts.0123456789ab.json.part", "half"}};
  for (const auto& [name, content] : others) folder.write(name, content);
  folder.write("phone-aaaaaaaa.0123456789ab.json.part", "left by a killed run");
  EXPECT_EQ(load(*destination), (Marker{{sample()}}));
  removeLeftOvers(*destination);
  for (const auto& [name, content] : others) EXPECT_EQ(folder.read(name), content);
  EXPECT_EQ(filesIn(folder.path()).size(), others.size() + 2);
}

TEST(DestinationMarker, saved_withItsExplanation_isLoaded) {
  const TemporaryFolder folder;
  const auto destination = openFolder(folder.path());
  save(*destination, sample());
  EXPECT_THAT(load(*destination).records, ElementsAre(sample()));
  EXPECT_EQ(folder.read("phone-records.txt"),
            "Records of the phones that copied photos into this folder. Safe to delete; the next "
            "copy will start "
            "over.\n");
  folder.write("phone-records.txt", "mine");
  save(*destination, sample());
  EXPECT_EQ(folder.read("phone-records.txt"), "mine");
  EXPECT_THAT(filesIn(folder.path()), ElementsAre(file, "phone-records.txt"));
}

/// Counts the bytes that are read from its files.
class CountingFolder : public FaultyFolder {
 public:
  using FaultyFolder::FaultyFolder;

  std::unique_ptr<ByteReader> openFile(const std::string& path) const override {
    return std::make_unique<Reader>(FaultyFolder::openFile(path), bytesRead);
  }
  mutable std::uint64_t bytesRead = 0;

 private:
  struct Reader : ByteReader {
    Reader(std::unique_ptr<ByteReader> inner, std::uint64_t& bytes)
        : inner_(std::move(inner)), bytes_(bytes) {}
    std::size_t read(std::span<char> buffer) override {
      const std::size_t count = inner_->read(buffer);
      bytes_ += count;
      return count;
    }
    std::unique_ptr<ByteReader> inner_;
    std::uint64_t& bytes_;
  };
};

TEST(DestinationMarker, plantedFile_isNotReadToItsEnd) {
  const TemporaryFolder folder;
  folder.write(file, encode(sample()));
  const std::vector<std::string> planted{"", "{\n  \"files\": [", "x", "   x"};
  std::vector<std::string> names;
  for (const std::string& begin : planted) {
    names.push_back("phone-0000000" + std::to_string(names.size()) + ".json");
    folder.write(names.back(), begin);
    std::filesystem::resize_file(folder / names.back(), std::uint64_t{900} << 20U);
  }
  // One that is too large is not even opened.
  names.emplace_back("phone-00000009.json");
  folder.write(names.back(), "{");
  std::filesystem::resize_file(folder / names.back(), std::uint64_t{5} << 30U);
  const CountingFolder destination{openFolder(folder.path())};
  const Marker marker = load(destination);
  EXPECT_EQ(marker.records, std::vector{sample()});
  EXPECT_EQ(marker.damaged, names);
  EXPECT_LT(destination.bytesRead, 1'000'000U);
}

TEST(DestinationMarker, recordThatAnotherProgramLaidOut_isReadInPieces) {
  const TemporaryFolder folder;
  std::string json = encode(sample());
  // A long record, with notes that are wrong: it is read twice.
  json.insert(1, std::string(100'000, ' '));
  json.replace(json.find("\"making\""), 8, "\"making\": \"x\", \"other\"");
  folder.write(file, json);
  const CountingFolder destination{openFolder(folder.path())};
  PhoneRecord expected = sample();
  expected.folders.clear();
  EXPECT_THAT(load(destination).records, ElementsAre(expected));
  EXPECT_GT(destination.bytesRead, 2 * json.size());
}

TEST(DestinationMarker, recordsThatAreTooLong_areNamedAndNeverTakenForAbsent) {
  const TemporaryFolder folder;
  PhoneRecord record = sample();
  const std::uint64_t size = encode(record).size();
  for (const char digit : {'0', '1', '2'}) {
    record.phoneHash = std::string(64, digit);
    folder.write(fileName(record.phoneHash), encode(record));
  }
  // Only the beginning of a file that is no record is read.
  folder.write("phone-33333333.json", "{\n  \"files\": [");
  std::filesystem::resize_file(folder / "phone-33333333.json", std::uint64_t{900} << 20U);
  const auto destination = openFolder(folder.path());
  EXPECT_THAT(load(*destination, {std::uint64_t{1} << 30U, 3 * size + 100'000}).records, SizeIs(3));
  EXPECT_THAT(load(*destination, {size - 1, 4 * size}).damaged, SizeIs(4)) << "one is too long";
  try {
    load(*destination, {size, 3 * size - 1});
    ADD_FAILURE();
  } catch (const FileError& error) {
    EXPECT_EQ(error.code(), EFBIG);
    EXPECT_EQ(error.path(), "phone-22222222.json");
  }
}

TEST(DestinationMarker, recordOfAVolumeThatDoesNotAnswer_isNotAbsent) {
  const TemporaryFolder folder;
  folder.write(file, encode(sample()));
  FaultyFolder destination{openFolder(folder.path())};
  destination.faults().rule = failing(FileOperation::read, ENOTCONN);
  EXPECT_THROW(load(destination), FileError);
  EXPECT_THROW(save(destination, sample()), FileError);
  // A record that was not read is kept, even if it can be read later.
  destination.faults().rule = failing(FileOperation::read, EIO);
  EXPECT_THAT(load(destination).damaged, ElementsAre(file));
  destination.faults().rule = {};
  PhoneRecord other = sample();
  other.files.clear();
  save(destination, other, false);
  EXPECT_EQ(folder.read(file + ".damaged"), encode(sample()));
  EXPECT_THAT(load(destination).records, ElementsAre(other));
}

TEST(DestinationMarker, damagedFile_isKeptBesideTheNewOne) {
  const TemporaryFolder folder;
  const auto destination = openFolder(folder.path());
  PhoneRecord stranger = sample();
  stranger.phoneHash = std::string(8, 'a') + std::string(56, 'b');
  for (const std::string& content : {std::string{"{\"files\": ["}, encode(stranger)}) {
    folder.write(file, content);
    save(*destination, sample());
  }
  EXPECT_EQ(folder.read(file + ".damaged"), "{\"files\": [");
  EXPECT_EQ(folder.read(file + ".damaged-2"), encode(stranger));
  EXPECT_THAT(load(*destination).records, ElementsAre(sample()));
}

TEST(DestinationMarker, save_thatFails_leavesTheEarlierRecord) {
  const TemporaryFolder folder;
  FaultyFolder destination{openFolder(folder.path())};
  save(destination, sample());
  PhoneRecord later = sample();
  later.files.clear();
  for (const FileOperation operation :
       {FileOperation::create, FileOperation::write, FileOperation::sync, FileOperation::close,
        FileOperation::rename}) {
    destination.faults().rule = failing(operation, ENOSPC);
    EXPECT_THROW(save(destination, later), FileError);
    EXPECT_EQ(decode(folder.read(file)), sample());
    EXPECT_THAT(filesIn(folder.path()), ElementsAre(file, "phone-records.txt"));
  }
}

TEST(DestinationMarker, update_keepsWhatIsThere_andReplacesByPath) {
  PhoneRecord earlier = sample();
  earlier.files = {{"a", 1, {}, "1", {}}, {"gone", 1, {}, "2", {}}, {"b", 1, {}, "3", {}}};
  PhoneRecord now = sample();
  now.firstTransfer = now.lastTransfer = nextDay;
  now.files = {{"c", 5, {}, "5", {}}, {"b", 2, {}, "4", {}}, {"c", 6, {}, "6", {}}};
  earlier.folders.clear();
  now.folders.clear();
  const auto onDisk = [](const std::string& path) { return path != "gone"; };
  const PhoneRecord result = updated(&earlier, now, onDisk);
  EXPECT_EQ(result.firstTransfer, day);
  EXPECT_EQ(result.lastTransfer, nextDay);
  EXPECT_THAT(result.files,
              ElementsAre(FileRecord{"a", 1, {}, "1", {}}, FileRecord{"b", 2, {}, "4", {}},
                          FileRecord{"c", 6, {}, "6", {}}));
  EXPECT_EQ(updated(nullptr, now, onDisk).firstTransfer, nextDay);
}

TEST(DestinationMarker, notesOfFolders_stayAsLongAsTheirFiles) {
  const FolderMaking byDay{{"uiMode", "byDate"}};
  const FolderMaking byEvent{{"uiMode", "events"}};
  PhoneRecord earlier = sample();
  earlier.files = {{"a/1", 1, {}, "1", {}}, {"b/gone", 1, {}, "2", {}}, {"c/3", 1, {}, "3", {}}};
  earlier.folders = {{"a", byDay}, {"b", byDay}, {"c", byDay}};
  PhoneRecord now = sample();
  now.files = {{"c/4", 1, {}, "4", {}}, {"5", 1, {}, "5", {}}};
  now.folders = {{"d", byEvent}, {"c", byEvent}};
  const auto onDisk = [](const std::string& path) { return path != "b/gone"; };
  EXPECT_THAT(updated(&earlier, now, onDisk).folders,
              ElementsAre(FolderNote{"a", byDay}, FolderNote{"c", byEvent}));
}

TEST(DestinationMarker, oddNotes_costTheNotesAlone) {
  PhoneRecord plain = sample();
  plain.folders.clear();
  const std::string own = encode(plain);
  for (const char* const notes :
       {R"("folders": null)", R"("folders": ["a"])", R"("folders": [{"making": "0", "name": "a"}])",
        R"("folders": [{"making": 0}])", R"("makings": [1])", R"("makings": {})",
        R"("folders": [{"making": 7, "name": "a"}])"}) {
    EXPECT_EQ(decode(std::string{"{"} + notes + "," + own.substr(1)), plain) << notes;
  }
}

TEST(DestinationMarker, questions_areAnsweredByPhone) {
  PhoneRecord other = sample();
  other.phoneHash = std::string(64, 'b');
  other.label = "iPad";
  const Marker marker{{sample(), other}};
  EXPECT_EQ(*marker.record(hash), sample());
  EXPECT_EQ(marker.record("none"), nullptr);
  EXPECT_THAT(marker.others(hash), ElementsAre(other));
  EXPECT_THAT(marker.labels(), ElementsAre("iPad", "iPhone «Маши»"));
  const KnownAssets known = marker.knownAssets(hash);
  EXPECT_EQ(*known.record(assetOf("100APPLE/IMG_1.HEIC"))->path, "2026-05-20/IMG_1.HEIC");
  EXPECT_EQ(*known.record(assetOf("9/9.HEIC", 1, "cloud/1"))->path, "2026-05-20/IMG_1.HEIC");
  EXPECT_EQ(known.record(assetOf("9/9.HEIC")), nullptr);
  EXPECT_THAT(marker.knownAssets("none").byLocalID, IsEmpty());
}

}  // namespace
}  // namespace tavrix::DestinationMarker
