#include "device/metadata/MetadataReader.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "device/metadata/FileBytes.h"
#include "device/metadata/Iso6709.h"
#include "device/metadata/tests/support/CountingReader.h"
#include "device/metadata/tests/support/SampleFiles.h"
#include "foundation/files/FileError.h"
#include "foundation/json/JsonValue.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {

void PrintTo(const MediaMetadata& metadata, std::ostream* out) {
  const auto shown = [](const auto& value) {
    return value ? fmt::format("{}", *value) : std::string{"-"};
  };
  *out << fmt::format("{} {}, {} {}, {} x {}, {}, {}", shown(metadata.exifDate),
                      shown(metadata.exifOffset), shown(metadata.lat), shown(metadata.lon),
                      shown(metadata.px), shown(metadata.py), shown(metadata.cam),
                      shown(metadata.contentID));
}

namespace {

using testbytes::SampleFile;

MediaMetadata read(std::string_view bytes) {
  CountingReader file{bytes};
  return MetadataReader::read(file);
}

TEST(MetadataReader, everyKindOfFile_tellsAllInFewRanges) {
  auto samples = testbytes::sampleFiles();
  for (const SampleFile& sample : testbytes::unusualFiles()) samples.push_back(sample);
  for (const SampleFile& sample : samples) {
    CountingReader file{sample.bytes};
    EXPECT_EQ(MetadataReader::read(file), sample.expected) << sample.name;
    EXPECT_LE(file.ranges(), 3U) << sample.name;
    EXPECT_LE(file.bytesRead(), 3 * FileBytes::rangeBytes) << sample.name;
  }
}

/// Rounds the position, because exiftool prints 15 digits.
MediaMetadata rounded(MediaMetadata metadata) {
  for (auto* const value : {&metadata.lat, &metadata.lon}) {
    if (*value) *value = std::round(**value * 1e10) / 1e10;
  }
  return metadata;
}

TEST(MetadataReader, rareFile_tellsAll) {
  for (const SampleFile& sample : testbytes::rareFiles()) {
    EXPECT_EQ(rounded(read(sample.bytes)), rounded(sample.expected)) << sample.name;
  }
}

TEST(MetadataReader, zeroOfThePosition_hasNoSignAndIsNoPositionTwice) {
  using namespace testbytes;
  const auto positionOf = [](std::uint64_t south, std::uint64_t west) {
    Exif exif;
    exif.gps = position("S", {south, 1, 0, 1, 0, 1}, "W", {west, 1, 0, 1, 0, 1});
    return read(jpeg(exifSegment(exif)));
  };
  EXPECT_FALSE(std::signbit(positionOf(0, 5).lat.value()));
  EXPECT_FALSE(std::signbit(positionOf(5, 0).lon.value()));
  EXPECT_FALSE(positionOf(0, 0).lat);
  EXPECT_FALSE(read(film({.width = 8, .height = 6, .location = "+00.0000-000.0000/"})).lon);
}

TEST(MetadataReader, contentIdentifier_isThatOfTheMakerNoteOrTheKey) {
  using namespace testbytes;
  const auto of = [](const std::string& heading, std::uint64_t tag) {
    Exif exif = rome();
    exif.exif.push_back(makerNote(heading, tag, "2C5B-41F0"));
    return read(jpeg(exifSegment(exif) + frame(10, 20))).contentID;
  };
  const std::string heading{"Apple iOS\0\0\1MM", 14};
  EXPECT_EQ(of(heading, 0x11), "2C5B-41F0");
  EXPECT_EQ(of(heading, 0x12), std::nullopt);
  EXPECT_EQ(of("Nikon\0iOS\0\1MM", 0x11), std::nullopt);
  EXPECT_EQ(read(film({.width = 8, .height = 6, .contentID = "2C5B-41F0"})).contentID, "2C5B-41F0");
  EXPECT_EQ(read(film({.width = 8, .height = 6, .contentID = ""})).contentID, std::nullopt);
}

/// Returns the output of exiftool for every file of a folder, by file name.
std::map<std::string, JsonValue> toldByExiftool(const std::string& folder) {
  const std::string command = "exiftool -json -n -q -q '" + folder + "'";
  std::FILE* const pipe = ::popen(command.c_str(), "r");
  std::string output;
  std::array<char, 65536> buffer{};
  for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    output.append(buffer.data(), count);
  }
  ::pclose(pipe);
  std::map<std::string, JsonValue> result;
  const JsonValue document = parseJson(output);
  for (const JsonValue& file : *document.asArray()) {
    result[*file.member("FileName")->asString()] = file;
  }
  return result;
}

/// Returns the metadata in the output of exiftool for one file.
MediaMetadata metadataOf(const JsonValue& told, bool isFilm) {
  const auto text = [&](const char* name) -> std::optional<std::string> {
    const JsonValue* const value = told.member(name);
    return value != nullptr && value->asString() != nullptr ? std::optional{*value->asString()}
                                                            : std::nullopt;
  };
  const auto number = [&](const char* name) {
    const JsonValue* const value = told.member(name);
    return value == nullptr ? std::nullopt : value->asNumber();
  };
  const auto date = [&](const char* name) {
    auto value = text(name);
    return value && !value->starts_with("0000") ? value : std::nullopt;
  };
  MediaMetadata result;
  if (isFilm) {
    const auto keyed = date("CreationDate");
    result.exifDate = keyed ? keyed->substr(0, 19) : date("CreateDate");
    if (result.exifDate) result.exifOffset = keyed ? keyed->substr(19) : "+00:00";
  } else {
    const bool isOriginal = date("DateTimeOriginal").has_value();
    result.exifDate = isOriginal ? date("DateTimeOriginal") : date("CreateDate");
    if (result.exifDate) {
      result.exifOffset = text(isOriginal ? "OffsetTimeOriginal" : "OffsetTimeDigitized");
    }
    const auto tells = [&](const char* name) { return told.member(name) != nullptr; };
    result.cam = tells("ExposureTime") || tells("FNumber") || tells("ISO") ||
                 tells("FocalLength") || tells("LensInfo") || tells("LensModel");
  }
  // The identifier of a still has one of two names, after that of the field or of its group.
  for (const char* const name : {"ContentIdentifier", "MediaGroupUUID"}) {
    if (!result.contentID) result.contentID = text(name);
  }
  const auto lat = number("GPSLatitude");
  const auto lon = number("GPSLongitude");
  if (lat && lon) result.setPosition(*lat, *lon);
  result.setPixels(static_cast<std::uint64_t>(number("ImageWidth").value_or(0)),
                   static_cast<std::uint64_t>(number("ImageHeight").value_or(0)));
  return result;
}

void compareWithExiftool(const std::string& folder) {
  std::size_t compared = 0;
  for (const auto& [name, told] : toldByExiftool(folder)) {
    const MediaKind kind = mediaKindOfFileName(name);
    if (!isPictureKind(kind)) continue;
    const auto file = openForRangedReading(folder + "/" + name);
    EXPECT_EQ(rounded(MetadataReader::read(*file)),
              rounded(metadataOf(told, kind == MediaKind::video)))
        << name;
    ++compared;
  }
  EXPECT_GT(compared, 0U);
}

bool hasExiftool() { return std::system("command -v exiftool > /dev/null") == 0; }

TEST(MetadataReader, everyField_isAsExiftoolReadsIt) {
  if (!hasExiftool()) GTEST_SKIP() << "exiftool is not installed";
  const TemporaryFolder folder;
  for (const SampleFile& sample : testbytes::sampleFiles()) folder.write(sample.name, sample.bytes);
  for (const SampleFile& sample : testbytes::rareFiles()) folder.write(sample.name, sample.bytes);
  compareWithExiftool(folder.path());
}

TEST(MetadataReader, jpegOfManySegments_tellsWhatItsBudgetReaches) {
  using namespace testbytes;
  const auto segments = [](int count, std::size_t bytes) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += segment(0xE2, std::string{"ICC_PROFILE\0", 12} + std::string(bytes, 'p'));
    }
    return text;
  };
  const std::string exif = exifSegment(capture("2026:05:20 12:00:00", "+03:00"));
  struct Row {
    std::string segments;
    bool hasDate;
    bool hasPixels;
  };
  for (const Row& row : {Row{segments(200, 90) + exif + frame(4032, 3024), true, true},
                         Row{exif + segments(40, 65'000) + frame(4032, 3024), true, true},
                         Row{segments(40, 65'000) + exif + frame(4032, 3024), true, true},
                         Row{segments(160, 65'000) + exif + frame(4032, 3024), true, true},
                         // Over the limits for one file: only what comes before them is found.
                         Row{exif + segments(1100, 90) + frame(4032, 3024), true, false},
                         Row{segments(1100, 90) + exif + frame(4032, 3024), false, false}}) {
    const std::string bytes = jpeg(row.segments);
    CountingReader reader{bytes};
    const MediaMetadata metadata = MetadataReader::read(reader);
    EXPECT_EQ(metadata.exifDate.has_value(), row.hasDate);
    EXPECT_EQ(metadata.px.has_value(), row.hasPixels);
    if (row.hasPixels) {
      EXPECT_EQ(metadata.px, 4032);
    }
  }
}

/// Uses real files: TAVRIX_PHONE_FILES names their folder.
TEST(MetadataReader, filesOfAPhone_areAsExiftoolReadsThem) {
  const char* const folder = std::getenv("TAVRIX_PHONE_FILES");
  if (folder == nullptr || !hasExiftool()) GTEST_SKIP() << "TAVRIX_PHONE_FILES is not set";
  compareWithExiftool(folder);
  for (const auto& entry : std::filesystem::directory_iterator{folder}) {
    std::ifstream stream{entry.path(), std::ios::binary};
    const std::string bytes{std::istreambuf_iterator<char>{stream}, {}};
    CountingReader file{bytes};
    MetadataReader::read(file);
    EXPECT_LE(file.ranges(), 4U) << entry.path();
    EXPECT_LE(file.bytesRead(), 4 * FileBytes::rangeBytes) << entry.path();
  }
}

TEST(MetadataReader, offsetOfAFilm_isReadInEveryForm) {
  const std::vector<std::pair<std::string, std::optional<std::string>>> rows{
      {"+0300", "+03:00"},     {"+03:00", "+03:00"}, {"+03", "+03:00"},
      {".678+0300", "+03:00"}, {".6Z", "+00:00"},    {".678", std::nullopt},
      {".", std::nullopt},     {"+3", std::nullopt}, {"", std::nullopt}};
  for (const auto& [ending, offset] : rows) {
    const std::string bytes = testbytes::film(
        {.width = 640, .height = 480, .creationDate = "2026-05-20T12:00:00" + ending});
    CountingReader file{bytes};
    const MediaMetadata metadata = MetadataReader::read(file);
    EXPECT_EQ(metadata.exifDate, "2026:05:20 12:00:00") << ending;
    EXPECT_EQ(metadata.exifOffset, offset) << ending;
  }
}

TEST(MetadataReader, jpegWithTablesAndFillBytesBeforeItsFrame_hasTheSizeOfTheFrame) {
  using namespace testbytes;
  const std::string tables = segment(0xC4, std::string(17, '\x01')) + segment(0xCC, "\x01\x02");
  const MediaMetadata metadata = read(jpeg(tables + "\xFF\xFF" + frame(4032, 3024)));
  EXPECT_EQ(metadata.px, 4032);
  EXPECT_EQ(metadata.py, 3024);
}

TEST(MetadataReader, exifText_isReadWithoutWhatFollowsIt) {
  using namespace testbytes;
  const MediaMetadata metadata =
      read(jpeg(exifSegment(capture("2026:05:20 12:00:00.123", "+02:00  "))));
  EXPECT_EQ(metadata.exifDate, "2026:05:20 12:00:00");
  EXPECT_EQ(metadata.exifOffset, "+02:00");
}

/// Big-endian, as some cameras write their raw files, with everything in the first directory.
TEST(MetadataReader, rawPicture_mayTellAllInItsFirstDirectory) {
  using namespace testbytes;
  TiffBuilder builder;
  builder.add({whole(0x100, 4032), whole(0x101, 3024), rationals(0x829A, {1, 250}),
               text(0x9003, "2026:05:20 12:00:00"), text(0x9011, "+03:00")});
  EXPECT_EQ(read(builder.bytes()),
            metadata("2026:05:20 12:00:00", "+03:00", {}, {}, 4032, 3024, true));
}

TEST(MetadataReader, everyFormOfWebpAndGif_tellsItsSize) {
  using namespace testbytes;
  const auto webpOf = [](const std::string& type, const std::string& content) {
    const std::string part = "WEBP" + type + reversed(number(content.size(), 4)) + content;
    return "RIFF" + reversed(number(part.size(), 4)) + part;
  };
  const auto size = metadata(nullptr, nullptr, {}, {}, 4032, 3024, false);
  // A lossless picture has both sides less one in 14 bits each, a lossy one has two bits for its
  // scaling above those of each side.
  EXPECT_EQ(read(webpOf("VP8L", "\x2F" + reversed(number(3023U << 14U | 4031U, 4)) + "picture")),
            size);
  EXPECT_EQ(read(webpOf("VP8 ", std::string{"\x30\x01\0\x9D\x01\x2A", 6} +
                                    reversed(number(1U << 14U | 4032U, 2)) +
                                    reversed(number(2U << 14U | 3024U, 2)) + "picture")),
            size);
  EXPECT_EQ(read("GIF87a" + reversed(number(4032, 2)) + reversed(number(3024, 2)) + "\x3B;"), size);
}

TEST(MetadataReader, exifBlockOfAWebp_mayHaveTheMarkOfAJpeg) {
  using namespace testbytes;
  const std::string block = std::string{"Exif\0\0", 6} + tiff(rome());
  const std::string parts = "WEBPVP8X" + reversed(number(10, 4)) + number(0x08000000, 4) +
                            reversed(number(4031, 3)) + reversed(number(3023, 3)) + "EXIF" +
                            reversed(number(block.size(), 4)) + block;
  const MediaMetadata metadata = read("RIFF" + reversed(number(parts.size(), 4)) + parts);
  EXPECT_EQ(metadata.exifDate, "2026:05:20 12:00:00");
  EXPECT_EQ(metadata.px, 4032);
}

TEST(MetadataReader, boxOfNoSize_extendsToTheEndOfTheFile) {
  using namespace testbytes;
  const Movie movie{.width = 640, .height = 480, .location = "+41.9012+012.5000/"};
  const std::string header = moov(movie);
  const std::string bytes = film(movie).replace(film(movie).size() - header.size(), 4, 4, '\0');
  EXPECT_EQ(read(bytes), metadata(nullptr, nullptr, 41.9012, 12.5, 640, 480, {}));
}

TEST(MetadataReader, filmOfSeveralPictures_hasTheSizeOfItsFirst) {
  using namespace testbytes;
  const std::string first = moov({.width = 1920, .height = 1080});
  const std::string second = moov({.width = 160, .height = 120});
  // The tracks of the second film's header come after those of the first.
  const std::string both = box("moov", first.substr(8) + second.substr(8));
  EXPECT_EQ(read(box("ftyp", "qt  ") + both).px, 1920);
}

TEST(MetadataReader, exifBlockInSeveralPlaces_isNotReadFromTheFirst) {
  using namespace testbytes;
  std::string bytes = heif({.width = 8, .height = 6, .exif = rome()});
  const auto entry = bytes.find("iloc") + 4 + 4 + 2 + 2;
  // Item, method and file come before the number of extents.
  ASSERT_EQ(bytes.substr(entry + 6, 2), number(1, 2));
  EXPECT_TRUE(read(bytes).exifDate);
  bytes.replace(entry + 6, 2, number(2, 2));
  EXPECT_FALSE(read(bytes).exifDate);
}

TEST(MetadataReader, brokenExifSegment_doesNotHideAGoodOne) {
  using namespace testbytes;
  const std::string broken = segment(0xE1, std::string{"Exif\0\0", 6} + "no directory at all");
  const std::string good = exifSegment(capture("2026:05:20 12:00:00", "+02:00"));
  const std::string bytes = jpeg(broken + good + frame(10, 20));
  CountingReader file{bytes};
  EXPECT_EQ(MetadataReader::read(file).exifDate, "2026:05:20 12:00:00");
}

/// Files that end early, have false sizes or refer in circles.
TEST(MetadataReader, hostileFile_endsSoonWithWhatItHas) {
  using namespace testbytes;
  const std::string head = std::string{"II\x2A\0", 4};
  const auto le = [](std::uint64_t value, int bytes) { return reversed(number(value, bytes)); };
  std::string circle = head + le(8, 4);
  for (int i = 0; i < 3; ++i) circle += le(1, 2) + le(0x14A, 2) + le(4, 2) + le(1, 4) + le(8, 4);
  std::string manyPictures = head + le(8, 4) + le(1, 2) + le(0x14A, 2) + le(4, 2) +
                             le(0xFFFFFFFF, 4) + le(8, 4) + le(8, 4) + std::string(100'000, '\x08');
  std::string nested;
  for (int i = 0; i < 2000; ++i) nested = box("moov", nested);
  std::string empties = box("ftyp", "qt  ");
  for (int i = 0; i < 100'000; ++i) empties += box("free", "");
  const std::string noBytesInExtents =
      fullBox("iloc", 1, std::string(2, '\0') + number(0xFFFF, 2) + std::string(60'000, '\xFF'));
  std::string chunks;
  for (int i = 0; i < 50'000; ++i) chunks += chunk("tEXt", "a");
  const std::vector<std::pair<std::string, std::string>> files{
      {"circle of directories", circle},
      {"directory of no end", manyPictures},
      {"nested boxes", nested},
      {"empty boxes", empties},
      {"size of 64 bits", number(1, 4) + "ftyp" + std::string(8, '\xFF') + "moov"},
      {"extents of no bytes", box("ftyp", "heic") + fullBox("meta", 0, noBytesInExtents)},
      {"tiny box", box("ftyp", "qt  ") + number(3, 4) + "moov"},
      {"empty segments", "\xFF\xD8" +
                             [] {
                               std::string all;
                               for (int i = 0; i < 100'000; ++i) all += segment(0xE1, "");
                               return all;
                             }()},
      {"fill bytes", "\xFF\xD8" + std::string(1'000'000, '\xFF')},
      {"chunks", png(1, 1, chunks)},
  };
  for (const auto& [what, bytes] : files) {
    CountingReader file{bytes};
    MetadataReader::read(file);
    EXPECT_LE(file.ranges(), FileBytes::maxRanges) << what;
    EXPECT_LE(file.bytesRead(), FileBytes::maxBytes) << what;
  }
}

RC_GTEST_PROP(MetadataReader, damagedFile_costsNoMoreThanASound, ()) {
  static const auto samples = testbytes::sampleFiles();
  std::string bytes = samples[*rc::gen::inRange<std::size_t>(0, samples.size())].bytes;
  const auto places = std::min<std::size_t>(bytes.size(), 2000);
  for (int i = *rc::gen::inRange(1, 8); i > 0; --i) {
    bytes[*rc::gen::inRange<std::size_t>(0, places)] = *rc::gen::arbitrary<char>();
  }
  bytes.resize(*rc::gen::inRange<std::size_t>(0, bytes.size()));
  CountingReader file{bytes};
  const MediaMetadata metadata = MetadataReader::read(file);
  RC_ASSERT(file.bytesRead() <= FileBytes::maxBytes);
  RC_ASSERT(metadata.lat.has_value() == metadata.lon.has_value());
  RC_ASSERT(!metadata.exifOffset || metadata.exifDate);
}

TEST(MetadataReader, fileThatIsNoPicture_tellsNothing) {
  for (const std::string bytes : {"", "\xFF\xD8", "<?xml version=\"1.0\"?>", "RIFF....AVI LIST"}) {
    EXPECT_EQ(read(bytes), MediaMetadata{}) << bytes;
  }
}

TEST(Iso6709, textOfAnotherForm_isNoPoint) {
  EXPECT_EQ(parseIso6709("+00.5-179.25/"), (GeoPoint{0.5, -179.25}));
  for (const char* const text : {"", "+", "41.9+012.5/", "+41.9", "+419+012.5/", "+4+012/",
                                 "+41.9012.5/", "+41.9+12.5/", "+4x+012/", "+41.9+"}) {
    EXPECT_FALSE(parseIso6709(text)) << text;
  }
}

TEST(RangedReader, whatIsNoRegularFile_isRefused) {
  const TemporaryFolder folder;
  folder.write("file", "0123456789");
  std::filesystem::create_symlink("file", folder / "link");
  std::array<char, 8> buffer{};
  EXPECT_EQ(openForRangedReading(folder / "file")->read(6, buffer), 4U);
  EXPECT_EQ((std::string_view{buffer.data(), 4}), "6789");
  for (const char* const name : {"link", "missing", "."}) {
    EXPECT_THROW(openForRangedReading(folder / name), FileError) << name;
  }
}

}  // namespace
}  // namespace tavrix
