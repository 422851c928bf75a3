#include "conversion/codecs/StillMetadata.h"

#include <algorithm>
#include <array>
#include <optional>

#include "device/metadata/Bytes.h"
#include "foundation/Digest.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// The value of a field with whole numbers: its position in the block and its width.
struct Place {
  std::size_t offset = 0;
  std::size_t bytes = 0;
  bool isLittleEndian = false;
};

std::uint64_t number(std::string_view bytes, bool isLittleEndian) {
  return isLittleEndian ? littleEndian(bytes) : bigEndian(bytes);
}

/// Returns the position of the first directory's orientation; nullopt if it has none.
std::optional<Place> orientationPlace(std::string_view exif) {
  constexpr std::uint64_t orientationTag = 0x0112;
  if (exif.size() < 8) return std::nullopt;
  const bool isLittle = exif.starts_with("II");
  if (!isLittle && !exif.starts_with("MM")) return std::nullopt;
  if (number(exif.substr(2, 2), isLittle) != 42) return std::nullopt;
  const std::uint64_t directory = number(exif.substr(4, 4), isLittle);
  if (directory > exif.size() - 2) return std::nullopt;
  const std::uint64_t count = number(exif.substr(directory, 2), isLittle);
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t entry = directory + 2 + i * 12;
    if (entry + 12 > exif.size()) return std::nullopt;
    if (number(exif.substr(entry, 2), isLittle) != orientationTag) continue;
    const std::uint64_t type = number(exif.substr(entry + 2, 2), isLittle);
    if (type != 1 && type != 3 && type != 4) return std::nullopt;
    if (number(exif.substr(entry + 4, 4), isLittle) != 1) return std::nullopt;
    return Place{entry + 8, type == 1 ? 1U : type == 3 ? 2U : 4U, isLittle};
  }
  return std::nullopt;
}

constexpr std::size_t longestPayload = 65533;

void addExif(const std::string& exif, std::vector<JpegSegment>& segments) {
  using namespace std::string_literals;
  if (exif.empty()) return;
  std::string payload = "Exif\0\0"s + exif;
  if (payload.size() > longestPayload) throw ConversionError{ConversionFailure::metadataTooLarge};
  segments.push_back({0xE1, std::move(payload)});
}

/// Returns a number as four bytes in big-endian order.
std::string bigEndianBytes(std::size_t value) {
  std::string bytes(4, '\0');
  for (std::size_t i = 4; i-- > 0; value >>= 8U) bytes[i] = static_cast<char>(value & 0xFFU);
  return bytes;
}

/// Adds a packet of any length: the standard segment has only the name by which the rest is found.
void addExtendedXmp(const std::string& xmp, std::vector<JpegSegment>& segments) {
  using namespace std::string_literals;
  constexpr std::size_t longestPiece = 65400;
  constexpr std::size_t longestXmp = std::size_t{16} << 20U;
  if (xmp.size() > longestXmp) throw ConversionError{ConversionFailure::metadataTooLarge};
  std::string guid = md5Hex(xmp);
  std::transform(guid.begin(), guid.end(), guid.begin(),
                 [](char c) { return c >= 'a' && c <= 'f' ? static_cast<char>(c - 32) : c; });
  segments.push_back(
      {0xE1,
       "http://ns.adobe.com/xap/1.0/\0"s
       "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
       "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" "
       "xmlns:xmpNote=\"http://ns.adobe.com/xmp/note/\" xmpNote:HasExtendedXMP=\"" +
           guid + "\"/></rdf:RDF></x:xmpmeta>"});
  for (std::size_t at = 0; at < xmp.size(); at += longestPiece) {
    segments.push_back({0xE1, "http://ns.adobe.com/xmp/extension/\0"s + guid +
                                  bigEndianBytes(xmp.size()) + bigEndianBytes(at) +
                                  xmp.substr(at, longestPiece)});
  }
}

void addXmp(const std::string& xmp, std::vector<JpegSegment>& segments) {
  using namespace std::string_literals;
  constexpr std::size_t longestStandard = 65502;
  if (xmp.empty()) return;
  if (xmp.size() > longestStandard) return addExtendedXmp(xmp, segments);
  segments.push_back({0xE1, "http://ns.adobe.com/xap/1.0/\0"s + xmp});
}

void addIcc(const std::string& icc, std::vector<JpegSegment>& segments) {
  using namespace std::string_literals;
  constexpr std::size_t longestPiece = 65519;
  const std::size_t count = (icc.size() + longestPiece - 1) / longestPiece;
  if (count > 255) throw ConversionError{ConversionFailure::metadataTooLarge};
  for (std::size_t i = 0; i < count; ++i) {
    segments.push_back({0xE2, "ICC_PROFILE\0"s + static_cast<char>(i + 1) +
                                  static_cast<char>(count) +
                                  icc.substr(i * longestPiece, longestPiece)});
  }
}

/// Sets the value of the property at `at`, an attribute or an element, to the digit 1.
void setUpright(std::string& xmp, std::size_t at) {
  constexpr std::string_view between = " \t\r\n=\"'>";
  std::size_t value = at;
  while (value < xmp.size() && between.find(xmp[value]) != std::string_view::npos) ++value;
  if (value == at || value >= xmp.size() || xmp[value] < '1' || xmp[value] > '8') return;
  if (value + 1 < xmp.size() && xmp[value + 1] >= '0' && xmp[value + 1] <= '9') return;
  xmp[value] = '1';
}

}  // namespace

int orientationOf(std::string_view exif) {
  const auto place = orientationPlace(exif);
  if (!place) return 1;
  const std::uint64_t value =
      number(exif.substr(place->offset, place->bytes), place->isLittleEndian);
  return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
}

std::string withUprightExif(std::string exif) {
  const auto place = orientationPlace(exif);
  if (!place) return exif;
  for (std::size_t i = 0; i < place->bytes; ++i) {
    const bool isLowest = i == (place->isLittleEndian ? 0 : place->bytes - 1);
    exif[place->offset + i] = isLowest ? '\1' : '\0';
  }
  return exif;
}

std::string withUprightXmp(std::string xmp) {
  constexpr std::string_view property = "tiff:Orientation";
  for (std::size_t at = xmp.find(property); at != std::string::npos; at = xmp.find(property, at)) {
    at += property.size();
    setUpright(xmp, at);
  }
  return xmp;
}

std::vector<JpegSegment> segmentsOf(const StillMetadata& metadata) {
  std::vector<JpegSegment> segments;
  addExif(metadata.exif, segments);
  addXmp(metadata.xmp, segments);
  addIcc(metadata.icc, segments);
  return segments;
}

}  // namespace tavrix
