#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "archives/ZipRecords.h"
#include "archives/ZipVerification.h"
#include "archives/ZipWriter.h"
#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

using Kind = ZipError::Kind;

struct File {
  std::string name;
  std::string content;
  std::int64_t seconds = 1779278400;  // 2026-05-20T12:00:00Z
};

class TextBytes : public ByteReader {
 public:
  explicit TextBytes(std::string_view text) : text_(text) {}
  std::size_t read(std::span<char> buffer) override {
    // A disk may return short reads.
    const std::size_t count = std::min({buffer.size(), text_.size(), std::size_t{70'001}});
    std::copy_n(text_.begin(), count, buffer.begin());
    text_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view text_;
};

ZipEntry entryOf(const File& file) {
  return {file.name, file.content.size(), Instant{std::chrono::seconds{file.seconds}}};
}

std::string manyBytes(std::size_t count) {
  std::string bytes(count, '\0');
  std::uint32_t state = 7;
  for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  return bytes;
}

bool hasTool(const std::string& tool) {
  return std::system(("command -v " + tool + " > /dev/null 2>&1").c_str()) == 0;
}

/// Prints the view of a reader in another language: name, size, CRC-32, flags, method, local time,
/// mode.
constexpr std::string_view listing = R"(
import sys, zipfile, zlib
with zipfile.ZipFile(sys.argv[1]) as archive:
    for info in archive.infolist():
        crc, size = 0, 0
        with archive.open(info) as content:
            while block := content.read(1 << 20):
                crc, size = zlib.crc32(block, crc), size + len(block)
        assert (crc, size) == (info.CRC, info.file_size), info
        sys.stdout.buffer.write(('%s|%d|%d|%d|%s|%o\n' % (info.filename, size, info.flag_bits,
            info.compress_type, '%d-%d-%d %d:%d:%d' % info.date_time,
            info.external_attr >> 16)).encode())
)";

struct ZipTest : testing::Test {
  std::deque<ZippedEntry> pack(const std::vector<File>& files,
                               const TimeZone& zone = TimeZone::utc()) {
    const auto file = folder.createFile("a.zip");
    ZipWriter writer{*file, zone};
    std::vector<ZipEntry> entries;
    for (const File& each : files) {
      TextBytes content{each.content};
      entries.push_back(entryOf(each));
      writer.add(entries.back(), content);
    }
    writer.finish();
    file->close();
    EXPECT_EQ(writer.bytesWritten(), std::filesystem::file_size(temporary / "a.zip"));
    EXPECT_EQ(writer.bytesWritten(), ZipWriter::archiveBytes(entries));
    return writer.entries();
  }
  /// Returns the error of packing or reading back; nullopt if there is none.
  template <typename Work>
  static std::optional<Kind> failure(Work work) {
    try {
      work();
      return std::nullopt;
    } catch (const ZipError& error) {
      return error.kind();
    }
  }
  bool runs(const std::string& command) const {
    return std::system((command + " > '" + temporary / "out" + "' 2>&1").c_str()) == 0;
  }
  std::string out() const { return temporary.read("out"); }
  void expectThatOthersRead() const {
    const std::string path = "'" + temporary / "a.zip" + "'";
    for (const std::string tool : {"unzip -tq", "7z t"}) {
      if (!hasTool(tool.substr(0, tool.find(' ')))) {
        GTEST_SKIP() << tool << " is not installed; scripts/install-dependencies test brings it";
      }
      EXPECT_TRUE(runs(tool + " " + path)) << tool << '\n' << out();
    }
    if (!hasTool("python3")) GTEST_SKIP() << "python3 is not installed";
    temporary.write("list.py", std::string{listing});
    EXPECT_TRUE(runs("python3 '" + temporary / "list.py" + "' " + path)) << out();
  }

  FileDescriptor opened() const { return folder.openDescriptor("a.zip"); }

  TemporaryFolder temporary;
  FaultyFolder folder{openFolder(temporary.path())};
  std::string archive = temporary / "a.zip";
};

TEST_F(ZipTest, archive_isReadByOthersWithNamesTimesAndModes) {
  const std::string composed = "Кафе\xCC\x81/IMG é.JPG";  // a combining accent, and a composed one
  const auto entries = pack({{"2026-05-20/IMG_0001.HEIC", "0123456789"},
                             {"2026-05-20/empty.AAE", ""},
                             {composed, manyBytes(3'500'000), 1700000001},
                             {"🏖️/old.jpg", "x", -1}},
                            *TimeZone::load("Europe/Moscow"));
  EXPECT_EQ(failure([&] { ZipVerification::verify(opened(), entries); }), std::nullopt);
  expectThatOthersRead();
  if (IsSkipped()) return;
  EXPECT_EQ(out(),
            "2026-05-20/IMG_0001.HEIC|10|0|0|2026-5-20 15:0:0|100644\n"
            "2026-05-20/empty.AAE|0|0|0|2026-5-20 15:0:0|100644\n" +
                composed +
                "|3500000|2048|0|2023-11-15 1:13:20|100644\n"
                "🏖️/old.jpg|1|2048|0|1980-1-1 0:0:0|100644\n");
  // The exact time of the extra field, independent of the machine's time zone.
  EXPECT_TRUE(runs("cd '" + temporary.path() + "' && unzip -o -q a.zip && stat -c %Y '" + composed +
                   "' 2026-05-20/IMG_0001.HEIC"));
  EXPECT_EQ(out(), "1700000001\n1779278400\n");
  EXPECT_EQ(temporary.read(composed), manyBytes(3'500'000));
}

TEST_F(ZipTest, moreEntriesThanTheOldFormCounts_areAllThere) {
  std::vector<int> counts{65'535};
  if (std::getenv("TAVRIX_LONG_TESTS") != nullptr) counts = {65'534, 65'535, 65'536, 70'000};
  for (const int count : counts) {
    std::vector<File> files;
    for (int i = 0; i < count; ++i) files.push_back({fmt::format("d/{}.jpg", i), ""});
    const auto entries = pack(files);
    EXPECT_EQ(failure([&] { ZipVerification::verify(opened(), entries); }), std::nullopt) << count;
    expectThatOthersRead();
    if (IsSkipped()) return;
    const std::string lines = out();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), count);
  }
}

TEST_F(ZipTest, filesBeyondFourGigabytes_areWholeAndWhatFollowsToo) {
  if (std::getenv("TAVRIX_LONG_TESTS") == nullptr) {
    GTEST_SKIP() << "writes 5 GB; scripts/test --long runs it";
  }
  constexpr std::uint64_t large = std::uint64_t{5} << 30U;
  temporary.write("large", "begin");
  std::filesystem::resize_file(temporary / "large", large);
  std::deque<ZippedEntry> entries;
  {
    const auto file = folder.createFile("a.zip");
    ZipWriter writer{*file, TimeZone::utc()};
    const auto content = folder.openFile("large");
    writer.add({"d/large.MOV", large, Instant{}}, *content);
    TextBytes after{"after"};
    writer.add({"d/after.jpg", 5, Instant{}}, after);
    writer.finish();
    EXPECT_EQ(writer.bytesWritten(), ZipWriter::archiveBytes({{"d/large.MOV", large, Instant{}},
                                                              {"d/after.jpg", 5, Instant{}}}));
    entries = writer.entries();
  }
  EXPECT_EQ(failure([&] { ZipVerification::verify(opened(), entries); }), std::nullopt);
  expectThatOthersRead();
  if (IsSkipped()) return;
  EXPECT_THAT(out(), testing::HasSubstr("d/large.MOV|5368709120|"));
  EXPECT_TRUE(runs("unzip -p '" + archive + "' d/after.jpg"));
  EXPECT_EQ(out(), "after");
}

TEST_F(ZipTest, sizesAroundTheLimits_needTheRecordsThatTheyNeed) {
  // Sizes around 2^32 - 1, counted without writing them: header, directory and end.
  const auto overhead = [](std::uint64_t size) {
    return ZipWriter::archiveBytes({{"a", size, Instant{}}}) - size;
  };
  EXPECT_EQ(overhead(0), 30U + 1 + 9 + 46 + 1 + 9 + 22);
  EXPECT_EQ(overhead(0xFFFFFFFE), overhead(0) + 56 + 20);
  EXPECT_EQ(overhead(0xFFFFFFFF), overhead(0) + 56 + 20 + 20 + 20);
}

/// Returns the little-endian number of `count` bytes at a place in a record.
std::uint64_t numberAt(const std::string& record, std::size_t at, std::size_t count) {
  std::uint64_t value = 0;
  for (std::size_t i = count; i > 0; --i) {
    value = value << 8U | static_cast<unsigned char>(record.at(at + i - 1));
  }
  return value;
}

TEST(ZipRecords, numbersBeyondThirtyTwoBits_areInTheLargeFieldOfBothRecords) {
  constexpr std::uint64_t size = std::uint64_t{5} << 30U;
  constexpr std::uint64_t offset = std::uint64_t{6} << 30U;
  constexpr std::uint64_t elsewhere = 0xFFFFFFFF;
  const ZippedEntry large{{"a", size, Instant{}}, 0, offset};
  const std::string header = ZipRecords::localHeader(large, TimeZone::utc());
  EXPECT_EQ(numberAt(header, 4, 2), 45U) << "the version that is needed";
  for (const std::size_t at : {18U, 22U}) EXPECT_EQ(numberAt(header, at, 4), elsewhere);
  // The field follows the name of one letter and the field of the time.
  constexpr std::size_t field = 1 + 9;
  EXPECT_EQ(numberAt(header, 30 + field, 4), 0x0010'0001U);
  for (const std::size_t at : {4U, 12U}) EXPECT_EQ(numberAt(header, 30 + field + at, 8), size);

  const std::string listed = ZipRecords::directoryEntry(large, TimeZone::utc());
  for (const std::size_t at : {20U, 24U, 42U}) EXPECT_EQ(numberAt(listed, at, 4), elsewhere);
  EXPECT_EQ(numberAt(listed, 46 + field, 4), 0x0018'0001U);
  for (const std::size_t at : {4U, 12U}) EXPECT_EQ(numberAt(listed, 46 + field + at, 8), size);
  EXPECT_EQ(numberAt(listed, 46 + field + 20, 8), offset);

  const ZippedEntry behind{{"b", 5, Instant{}}, 0, offset};
  const std::string last = ZipRecords::directoryEntry(behind, TimeZone::utc());
  EXPECT_EQ(numberAt(last, 6, 2), 45U);
  EXPECT_EQ(numberAt(last, 24, 4), 5U);
  EXPECT_EQ(numberAt(last, 46 + field, 4), 0x0008'0001U);
  EXPECT_EQ(numberAt(last, 46 + field + 4, 8), offset);
}

TEST(ZipRecords, directoryOfAllThatTheOldFormCounts_hasTheLargeEnd) {
  EXPECT_EQ(ZipRecords::directoryEnd(65'534, 1, 1).size(), 22U);
  EXPECT_EQ(ZipRecords::directoryEnd(65'535, 1, 1).size(), 56U + 20 + 22);
}

TEST(ZipRecords, timeThatAFieldCannotHold_isLeftOutOrTheNearestOne) {
  const auto headerOf = [](const char* date) {
    return ZipRecords::localHeader({{"a", 0, *parseIso8601(date)}, 0, 0}, TimeZone::utc());
  };
  EXPECT_EQ(headerOf("2038-01-19T03:14:07Z").size(), 30U + 1 + 9);
  EXPECT_EQ(headerOf("2038-01-19T03:14:08Z").size(), 30U + 1);
  // Years from 1980 on, months, days, hours, minutes and pairs of seconds.
  constexpr std::uint64_t latest = 127U << 25U | 12U << 21U | 31U << 16U | 23U << 11U | 59U << 5U;
  EXPECT_EQ(numberAt(headerOf("2107-12-31T23:59:58Z"), 10, 4), latest + 29);
  EXPECT_EQ(numberAt(headerOf("2108-01-01T00:00:00Z"), 10, 4), latest + 29);
}

TEST(ZipRecords, mode_isThatOfTheEntryOnUnix) {
  const ZippedEntry zipped{{"a", 0, Instant{}, 0600}, 0, 0};
  const std::string listed = ZipRecords::directoryEntry(zipped, TimeZone::utc());
  EXPECT_EQ(numberAt(listed, 5, 1), 3U) << "the system on which it was made";
  EXPECT_EQ(numberAt(listed, 40, 2), 0100600U);
}

TEST_F(ZipTest, progress_addsUpToTheContent) {
  const std::string content = manyBytes(2'500'000);
  const auto file = folder.createFile("a.zip");
  ZipWriter writer{*file, TimeZone::utc()};
  std::uint64_t sum = 0;
  const auto received = [&](std::uint64_t bytes) { sum += bytes; };
  TextBytes bytes{content};
  writer.add({"a", content.size(), Instant{}}, bytes, received);
  EXPECT_EQ(sum, content.size());
  writer.finish();
  file->close();
  ZipVerification::verify(opened(), writer.entries(), received);
  EXPECT_EQ(sum, 2 * content.size());
}

TEST_F(ZipTest, readingBack_findsWhatWasDamaged) {
  const auto entries = pack({{"a/1.jpg", "0123456789"}, {"a/2.jpg", manyBytes(2'000'000)}});
  const std::string whole = temporary.read("a.zip");
  const auto verdict = [&](const std::string& bytes) {
    temporary.write("a.zip", bytes);
    return failure([&] { ZipVerification::verify(opened(), entries); });
  };
  EXPECT_EQ(verdict(whole), std::nullopt);
  const std::uint64_t second = entries[1].offset;
  const std::size_t directory = whole.find("PK\x01\x02", second + 2'000'000);
  const std::vector<std::size_t> places{32,           // the first name in its local header
                                        46,           // its first byte
                                        55,           // its last byte
                                        second + 14,  // a CRC
                                        second + 22,  // a size
                                        second + 1'000'000,
                                        second + 46 + 1'999'999,
                                        directory + 16,  // a CRC in the directory
                                        directory + 24,
                                        directory + 47,
                                        whole.size() - 12};
  for (const std::size_t place : places) {
    std::string damaged = whole;
    damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
    EXPECT_NE(verdict(damaged), std::nullopt) << place;
  }
  for (const std::size_t length : {std::size_t{0}, std::size_t{40}, directory, whole.size() - 1}) {
    EXPECT_NE(verdict(whole.substr(0, length)), std::nullopt) << length;
  }
  temporary.write("a.zip", whole);
  auto others = entries;
  others.pop_back();
  EXPECT_EQ(failure([&] { ZipVerification::verify(opened(), others); }), Kind::mismatch);
  others = entries;
  others[0].entry.name = "a/3.jpg";
  EXPECT_EQ(failure([&] { ZipVerification::verify(opened(), others); }), Kind::mismatch);
  others = entries;
  others[1].crc ^= 1U;
  EXPECT_EQ(failure([&] { ZipVerification::verify(opened(), others); }), Kind::mismatch);
}

TEST_F(ZipTest, namesThatLeadElsewhere_areRefused) {
  const std::vector<std::string> unsafe{"",          "/a",
                                        "../a",      "a/../b",
                                        "a/..",      "a//b",
                                        "a/",        "./a",
                                        "C:\\a",     "c:a",
                                        "..\\a",     "a\\..",
                                        "\\\\a\\b",  "a\nb",
                                        "a\x7F",     std::string("a\0b", 3),
                                        "a\xFF.jpg", std::string(65'536, 'a')};
  for (const std::string& name : unsafe) {
    EXPECT_EQ(failure([&] { pack({{name, "x"}}); }), Kind::unsafeName) << name.substr(0, 20);
  }
  for (const std::string name : {"a", "a b/…/..c", "IMG_0001 (2).HEIC", ".a", "a\\b"}) {
    EXPECT_EQ(failure([&] { pack({{name, "x"}}); }), std::nullopt) << name;
  }
  EXPECT_EQ(failure([&] { pack({{std::string(65'535, 'a'), "x"}}); }), std::nullopt);
  EXPECT_EQ(failure([&] { pack({{"a", "x"}, {"b", ""}, {"a", ""}}); }), Kind::duplicateName);
}

TEST_F(ZipTest, contentOfAnotherSize_isNotPacked) {
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{9}, std::size_t{11}, std::size_t{2'000'000}}) {
    const auto file = folder.createFile("a.zip");
    ZipWriter writer{*file, TimeZone::utc()};
    const std::string bytes = manyBytes(size);
    TextBytes content{bytes};
    EXPECT_EQ(failure([&] { writer.add({"a", 10, Instant{}}, content); }), Kind::contentChanged);
    EXPECT_LE(writer.bytesWritten(), 100U);
  }
}

TEST_F(ZipTest, fullDisk_isTheDisksFailure) {
  int writes = 0;
  int limit = 0;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::write && ++writes > limit)
      throw FileError{operation, path, ENOSPC};
  };
  // Header and content of each entry, the CRC of the second, and the directory.
  for (; limit < 7; ++limit) {
    writes = 0;
    EXPECT_THROW(pack({{"a", "x"}, {"b", manyBytes(1'500'000)}}), FileError) << limit;
  }
  writes = 0;
  pack({{"a", "x"}, {"b", manyBytes(1'500'000)}});
  EXPECT_EQ(writes, 7);
}

}  // namespace
}  // namespace tavrix
