#include <gmock/gmock.h>

#include "conversion/ConversionReport.h"
#include "conversion/codecs/StillMetadata.h"
#include "conversion/codecs/TiffExif.h"
#include "foundation/Digest.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// Returns a block whose only field is an orientation of the given type, with the given four value
/// bytes, and a second directory with another orientation.
std::string exifWith(bool isLittle, char type, const std::string& value) {
  const std::string head = isLittle ? "II\x2A\0\x08\0\0\0\x01\0"s : "MM\0\x2A\0\0\0\x08\0\x01"s;
  const std::string field = isLittle ? "\x12\x01"s + type + "\0\x01\0\0\0"s + value
                                     : "\x01\x12\0"s + type + "\0\0\0\x01"s + value;
  return head + field + (isLittle ? "\x1A\0\0\0"s : "\0\0\0\x1A"s) + "maker note";
}

TEST(StillMetadata, orientation_becomesUpright_andNothingElseChanges) {
  struct Row {
    bool isLittle;
    char type;
    std::string value;
    int orientation;
    std::string upright;
  };
  const Row rows[] = {
      {true, 3, "\x06\0\0\0"s, 6, "\x01\0\0\0"s},  {false, 3, "\0\x08\0\0"s, 8, "\0\x01\0\0"s},
      {false, 3, "\0\x06zz"s, 6, "\0\x01zz"s},     {true, 4, "\x03\0\0\0"s, 3, "\x01\0\0\0"s},
      {false, 4, "\0\0\0\x05"s, 5, "\0\0\0\x01"s}, {true, 3, "\x09\0\0\0"s, 1, "\x01\0\0\0"s},
      {true, 2, "6\0\0\0"s, 1, "6\0\0\0"s}};
  for (const Row& row : rows) {
    const std::string exif = exifWith(row.isLittle, row.type, row.value);
    EXPECT_EQ(orientationOf(exif), row.orientation);
    EXPECT_EQ(withUprightExif(exif), exifWith(row.isLittle, row.type, row.upright));
    // Truncated at any length, it stays unchanged or keeps its length.
    for (std::size_t length = 0; length < exif.size(); ++length)
      EXPECT_EQ(withUprightExif(exif.substr(0, length)).size(), length);
  }
  const std::string lost = "II\x2A\0\xFF\xFF\xFF\xFF"s;
  EXPECT_EQ(withUprightExif(lost), lost);
}

TEST(StillMetadata, xmp_tellsOfNoTurn) {
  const std::pair<std::string, std::string> rows[] = {
      {"<a tiff:Orientation=\"6\" b=\"6\"/>", "<a tiff:Orientation=\"1\" b=\"6\"/>"},
      {"<tiff:Orientation>8</tiff:Orientation>", "<tiff:Orientation>1</tiff:Orientation>"},
      {"tiff:Orientation = '3'", "tiff:Orientation = '1'"},
      {"tiff:Orientation=\"10\"", "tiff:Orientation=\"10\""},
      {"tiff:Orientation", "tiff:Orientation"}};
  for (const auto& [packet, upright] : rows) EXPECT_EQ(withUprightXmp(packet), upright);
}

TEST(StillMetadata, segments_holdWhatFits) {
  const std::string icc(70'000, 'p');
  const auto segments = segmentsOf({"II*", "<x/>", icc});
  ASSERT_THAT(segments, SizeIs(4));
  EXPECT_EQ(segments[0], (JpegSegment{0xE1, "Exif\0\0II*"s}));
  EXPECT_EQ(segments[1], (JpegSegment{0xE1, "http://ns.adobe.com/xap/1.0/\0<x/>"s}));
  EXPECT_EQ(segments[2].payload, "ICC_PROFILE\0\x01\x02"s + icc.substr(0, 65519));
  EXPECT_EQ(segments[3].payload, "ICC_PROFILE\0\x02\x02"s + icc.substr(65519));
  for (const StillMetadata& large :
       {StillMetadata{std::string(65'528, 'e'), {}, {}},
        StillMetadata{{}, std::string((16U << 20U) + 1, 'x'), {}},
        StillMetadata{{}, {}, std::string(std::size_t{65519} * 255 + 1, 'i')}}) {
    EXPECT_THROW(segmentsOf(large), ConversionError);
  }
}

TEST(StillMetadata, longXmp_isExtended) {
  std::string xmp;
  for (int i = 0; xmp.size() < 150'000; ++i) xmp += "<v n='" + std::to_string(i) + "'/>";
  const auto segments = segmentsOf({{}, xmp, {}});
  ASSERT_THAT(segments, SizeIs(4));
  std::string guid = md5Hex(xmp);
  for (char& c : guid) c = static_cast<char>(std::toupper(c));
  EXPECT_THAT(segments[0].payload, HasSubstr("HasExtendedXMP=\"" + guid + "\""));
  std::string joined;
  for (std::size_t i = 1; i < segments.size(); ++i) {
    const std::string head = "http://ns.adobe.com/xmp/extension/\0"s + guid;
    EXPECT_THAT(segments[i].payload, StartsWith(head));
    EXPECT_LE(segments[i].payload.size(), 65'533U);
    joined += segments[i].payload.substr(head.size() + 8);
  }
  EXPECT_EQ(joined, xmp);
}

TEST(TiffExif, fieldsOfThePicture_areKept_thoseOfThePixelsAreNot) {
  // Width 2, description "shot", an Exif directory with one date.
  const std::string tiff =
      "II\x2A\0\x08\0\0\0\x03\0"
      "\x00\x01\x03\0\x01\0\0\0\x02\0\0\0"
      "\x0E\x01\x02\0\x06\0\0\0\x32\0\0\0"
      "\x69\x87\x04\0\x01\0\0\0\x38\0\0\0"
      "\0\0\0\0"
      "shots\0"
      "\x01\0\x03\x90\x02\0\x08\0\0\0\x4A\0\0\0\0\0\0\0"
      "2026:05\0"s;
  const std::string exif = exifOfTiff(tiff);
  EXPECT_THAT(exif, StartsWith("II\x2A\0\x08\0\0\0\x02\0"s));
  EXPECT_THAT(exif, HasSubstr("shots\0"s));
  EXPECT_THAT(exif, HasSubstr("2026:05\0"s));
  EXPECT_THAT(exif, Not(HasSubstr("\x00\x01\x03\0\x01\0\0\0\x02"s)));
  EXPECT_EQ(exifOfTiff("no such file"s), "");
  for (std::size_t length = 0; length < tiff.size(); ++length) {
    exifOfTiff(tiff.substr(0, length));
    EXPECT_FALSE(isRawTiff(tiff.substr(0, length)));
  }
}

TEST(ConversionReport, lines_comeBack_andNothingElseIsBelieved) {
  using namespace ConversionReport;
  const ConversionResult result{4032, 3024, 1500, true};
  for (const Ending& ending :
       {Ending{result}, Ending{ConversionFailure::rawPicture}, Ending{Unwritable{28}}}) {
    Reader reader;
    const std::string text = progressLine(0.25) + endingLine(ending) + "done 1 1 0 0\n";
    EXPECT_EQ(reader.add(text.substr(0, 5)), std::nullopt);
    EXPECT_EQ(reader.add(text.substr(5)), 0.25);
    EXPECT_EQ(reader.ending(), ending);
  }
  Reader reader;
  for (const auto* const line :
       {"done 1 1 0\n", "done -1 1 0 0\n", "kept nothing\n", "unwritable\n", "progress 2\n",
        "progress nan\n", "\n", "done 1 1 0 0"}) {
    EXPECT_EQ(reader.add(line), std::nullopt) << line;
  }
  reader.add(std::string(1'000'000, 'x') + "\n");
  EXPECT_EQ(reader.ending(), std::nullopt);
}

}  // namespace
}  // namespace tavrix
