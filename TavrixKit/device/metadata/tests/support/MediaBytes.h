#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Builds the bytes of small files of every format, for tests. Each file is built as a camera would
/// write it, with the content that the test asks for and nothing else.
namespace tavrix::testbytes {

inline std::string number(std::uint64_t value, int bytes) {
  std::string text;
  for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) {
    text += static_cast<char>(static_cast<unsigned char>(value >> static_cast<unsigned>(shift)));
  }
  return text;
}

inline std::string reversed(std::string bytes) { return {bytes.rbegin(), bytes.rend()}; }

/// A field of a directory: its tag, type, and values of `valueBytes` bytes each, big-endian.
struct TiffField {
  std::uint64_t tag;
  std::uint64_t type;
  int valueBytes;
  std::vector<std::uint64_t> values;
};

inline TiffField text(std::uint64_t tag, const std::string& content) {
  TiffField field{tag, 2, 1, {}};
  for (const char c : content) field.values.push_back(static_cast<unsigned char>(c));
  field.values.push_back(0);
  return field;
}
inline TiffField whole(std::uint64_t tag, std::uint64_t value) { return {tag, 4, 4, {value}}; }
/// Returns a field of fractions; `parts` has numerators and denominators in turn.
inline TiffField rationals(std::uint64_t tag, std::vector<std::uint64_t> parts) {
  return {tag, 5, 4, std::move(parts)};
}

using TiffFields = std::vector<TiffField>;

/// Returns the field of a maker note: a heading of `heading`, then a directory with one text, whose
/// offset counts from the start of the note.
inline TiffField makerNote(std::string heading, std::uint64_t tag, const std::string& content) {
  heading += number(1, 2) + number(tag, 2) + number(2, 2) + number(content.size() + 1, 4);
  heading += number(heading.size() + 8, 4) + number(0, 4) + content + std::string(1, '\0');
  TiffField field{0x927C, 7, 1, {}};
  for (const char c : heading) field.values.push_back(static_cast<unsigned char>(c));
  return field;
}

/// Builds consecutive directories in one byte order, each at an offset that is known in advance.
class TiffBuilder {
 public:
  explicit TiffBuilder(bool isLittleEndian = false) : isLittleEndian_(isLittleEndian) {
    bytes_ = (isLittleEndian ? "II" : "MM") + ordered(42, 2) + ordered(8, 4);
  }

  /// Returns the offset at which the next directory will begin.
  std::uint64_t offset() const { return bytes_.size(); }
  static std::uint64_t sizeOf(const TiffFields& fields) {
    std::uint64_t size = 6 + fields.size() * 12;
    for (const TiffField& field : fields) {
      const std::uint64_t bytes = bytesOf(field);
      size += bytes > 4 ? bytes + bytes % 2 : 0;
    }
    return size;
  }
  void add(const TiffFields& fields, std::uint64_t next = 0) {
    std::string table = ordered(fields.size(), 2);
    std::string values;
    const std::uint64_t valuesAt = offset() + 6 + fields.size() * 12;
    for (const TiffField& field : fields) {
      const bool isFraction = field.type == 5 || field.type == 10;
      const std::uint64_t count = field.values.size() / (isFraction ? 2 : 1);
      table += ordered(field.tag, 2) + ordered(field.type, 2) + ordered(count, 4);
      std::string content;
      for (const std::uint64_t value : field.values) content += ordered(value, field.valueBytes);
      if (content.size() <= 4) {
        content.resize(4, '\0');
        table += content;
      } else {
        table += ordered(valuesAt + values.size(), 4);
        values += content + std::string(content.size() % 2, '\0');
      }
    }
    bytes_ += table + ordered(next, 4) + values;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  static std::uint64_t bytesOf(const TiffField& field) {
    return field.values.size() * static_cast<std::uint64_t>(field.valueBytes);
  }
  std::string ordered(std::uint64_t value, int bytes) const {
    const std::string text = number(value, bytes);
    return isLittleEndian_ ? reversed(text) : text;
  }

  bool isLittleEndian_;
  std::string bytes_;
};

/// The fields of an Exif block to build.
struct Exif {
  TiffFields main{};
  TiffFields exif{};
  TiffFields gps{};
  bool isLittleEndian = false;
};

inline Exif capture(const std::string& date, const std::string& offset) {
  Exif exif{.exif = {rationals(0x829A, {1, 250}), text(0x9003, date)}};
  if (!offset.empty()) exif.exif.push_back(text(0x9011, offset));
  return exif;
}
inline TiffFields position(const std::string& north, std::vector<std::uint64_t> latitude,
                           const std::string& east, std::vector<std::uint64_t> longitude) {
  return {text(1, north), rationals(2, std::move(latitude)), text(3, east),
          rationals(4, std::move(longitude))};
}

/// Returns a TIFF structure with an Exif directory and, if `exif` has fields for it, a GPS
/// directory.
inline std::string tiff(const Exif& exif) {
  TiffBuilder builder{exif.isLittleEndian};
  TiffFields main = exif.main;
  const bool hasGps = !exif.gps.empty();
  main.push_back(whole(0x8769, 0));
  if (hasGps) main.push_back(whole(0x8825, 0));
  const std::uint64_t exifAt = builder.offset() + TiffBuilder::sizeOf(main);
  main[exif.main.size()].values = {exifAt};
  if (hasGps) main.back().values = {exifAt + TiffBuilder::sizeOf(exif.exif)};
  builder.add(main);
  builder.add(exif.exif);
  if (hasGps) builder.add(exif.gps);
  return builder.bytes();
}

inline std::string segment(int marker, const std::string& content) {
  return "\xFF" + number(static_cast<std::uint64_t>(marker), 1) + number(content.size() + 2, 2) +
         content;
}
inline std::string exifSegment(const Exif& exif) {
  return segment(0xE1, std::string{"Exif\0\0", 6} + tiff(exif));
}
inline std::string frame(std::uint64_t width, std::uint64_t height, int marker = 0xC0) {
  return segment(marker, "\x08" + number(height, 2) + number(width, 2) + "\x01\x01\x11" +
                             std::string(1, '\0'));
}
/// Returns a JPEG file with the given segments and without a picture.
inline std::string jpeg(const std::string& segments) {
  return "\xFF\xD8" + segments + segment(0xDA, std::string{"\x01\x01\0\0\x3F\0", 6}) + "\xFF\xD9";
}

inline std::uint32_t crc32(const std::string& bytes) {
  std::uint32_t crc = ~0U;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1U ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
  }
  return ~crc;
}
inline std::string chunk(const std::string& type, const std::string& content) {
  return number(content.size(), 4) + type + content + number(crc32(type + content), 4);
}
inline std::string png(std::uint64_t width, std::uint64_t height, const std::string& before,
                       const std::string& after = "", std::size_t dataBytes = 40'000) {
  return "\x89PNG\r\n\x1A\n" +
         chunk("IHDR", number(width, 4) + number(height, 4) + std::string{"\x08\x02\0\0\0", 5}) +
         before + chunk("IDAT", std::string(dataBytes, 'x')) + after + chunk("IEND", "");
}

inline std::string webp(const Exif& exif, std::uint64_t width, std::uint64_t height) {
  const auto part = [](const std::string& type, const std::string& content) {
    return type + reversed(number(content.size(), 4)) + content +
           std::string(content.size() % 2, '\0');
  };
  const std::string parts = "WEBP" +
                            part("VP8X", number(0x08000000, 4) + reversed(number(width - 1, 3)) +
                                             reversed(number(height - 1, 3))) +
                            part("VP8L", std::string(21, 'x')) + part("EXIF", tiff(exif));
  return "RIFF" + reversed(number(parts.size(), 4)) + parts;
}

/// Returns a bitmap whose rows are stored from the top.
inline std::string bitmap(std::uint64_t width, std::uint64_t height) {
  return "BM" + std::string(8, '\0') + reversed(number(54, 4)) + reversed(number(40, 4)) +
         reversed(number(width, 4)) + reversed(number(~height + 1, 4)) +
         reversed(number(0x00180001, 4)) + std::string(24, '\0');
}

inline std::string box(const std::string& type, const std::string& content) {
  return number(8 + content.size(), 4) + type + content;
}
/// As box(), with a 64-bit size.
inline std::string largeBox(const std::string& type, const std::string& content) {
  return number(1, 4) + type + number(16 + content.size(), 8) + content;
}
inline std::string fullBox(const std::string& type, int version, const std::string& content,
                           std::uint64_t flags = 0) {
  return box(type, number(static_cast<std::uint64_t>(version), 1) + number(flags, 3) + content);
}

/// The content and layout of a HEIF file to build.
struct Heif {
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  std::optional<Exif> exif{};
  bool isWide = false;        ///< later versions of the boxes: 32-bit items, large indexes
  bool exifInMeta = false;    ///< the Exif item is in the box "idat"
  bool hasOtherExif = false;  ///< an Exif item of another picture comes first
};

/// Returns a HEIF file. Items: 1 a tile, 2 the primary picture, 3 its Exif block, 4 the Exif block
/// of the tile.
inline std::string heif(const Heif& heif, const std::string& brand = "heic") {
  const int idBytes = heif.isWide ? 4 : 2;
  const int infe = heif.isWide ? 3 : 2;
  const auto item = [&](std::uint64_t id, const std::string& type) {
    return fullBox("infe", infe, number(id, idBytes) + number(0, 2) + type + std::string(1, '\0'));
  };
  std::string items = item(1, "hvc1") + item(2, "grid");
  if (heif.hasOtherExif) items += item(4, "Exif");
  if (heif.exif) items += item(3, "Exif");
  const std::uint64_t count = 2U + (heif.hasOtherExif ? 1U : 0U) + (heif.exif ? 1U : 0U);
  const std::string list =
      fullBox("iinf", heif.isWide ? 1 : 0, number(count, heif.isWide ? 4 : 2) + items);
  const auto refers = [&](std::uint64_t from, std::uint64_t to) {
    return box("cdsc", number(from, idBytes) + number(1, 2) + number(to, idBytes));
  };
  const std::string references = fullBox("iref", heif.isWide ? 1 : 0, refers(4, 1) + refers(3, 2));
  const auto size = [](std::uint64_t width, std::uint64_t height) {
    return fullBox("ispe", 0, number(width, 4) + number(height, 4));
  };
  const auto index = [&](std::uint64_t value) {
    return number(value | (heif.isWide ? 0x8000U : 0x80U), heif.isWide ? 2 : 1);
  };
  const std::string properties =
      box("iprp",
          box("ipco", size(512, 512) + box("irot", number(3, 1)) + size(heif.width, heif.height)) +
              fullBox("ipma", heif.isWide ? 1 : 0,
                      number(2, 4) + number(1, idBytes) + number(1, 1) + index(1) +
                          number(2, idBytes) + number(2, 1) + index(2) + index(3),
                      heif.isWide ? 1 : 0));
  const std::string exif =
      heif.exif ? number(6, 4) + std::string{"Exif\0\0", 6} + tiff(*heif.exif) : "";
  const std::string other = number(0, 4) + tiff(capture("2001:01:01 01:01:01", ""));
  const auto locations = [&](std::uint64_t mediaAt) {
    std::string entries;
    std::uint64_t entryCount = 0;
    const auto add = [&](std::uint64_t id, int method, std::uint64_t at, std::uint64_t length) {
      entries += number(id, idBytes) + number(static_cast<std::uint64_t>(method), 2) +
                 number(0, 2) + number(1, 2) + number(at, 4) + number(length, 4);
      ++entryCount;
    };
    if (heif.hasOtherExif) add(4, 0, mediaAt, other.size());
    if (heif.exif) {
      add(3, heif.exifInMeta ? 1 : 0, heif.exifInMeta ? 0 : mediaAt + other.size(), exif.size());
    }
    return fullBox("iloc", heif.isWide ? 2 : 1,
                   std::string{"\x44\0", 2} + number(entryCount, idBytes) + entries);
  };
  const auto meta = [&](std::uint64_t mediaAt) {
    return fullBox("meta", 0,
                   fullBox("pitm", heif.isWide ? 1 : 0, number(2, idBytes)) + list + references +
                       properties + (heif.exifInMeta ? box("idat", exif) : "") +
                       locations(mediaAt));
  };
  const std::string type = box("ftyp", brand + number(0, 4) + "mif1" + "heic");
  const std::uint64_t mediaAt = type.size() + meta(0).size() + 8;
  return type + meta(mediaAt) + box("mdat", other + (heif.exifInMeta ? "" : exif));
}

/// The content and layout of a film to build.
struct Movie {
  std::uint64_t width = 0;
  std::uint64_t height = 0;
  std::string creationDate{};    ///< value of the key; no key if empty
  std::string contentID{};       ///< value of the key; no key if empty
  std::string location{};        ///< value of the key; no key if empty
  std::string userLocation{};    ///< position in the user data; none if empty
  std::string userData{};        ///< further boxes of the user data
  std::uint64_t headerDate = 0;  ///< seconds since 1904
  bool isWide = false;           ///< 64-bit dates
  bool isFirst = false;          ///< the film's header comes before its media
  bool isMp4 = false;            ///< "meta" is in the user data, with version and flags
};

inline std::string moov(const Movie& movie) {
  const int dateBytes = movie.isWide ? 8 : 4;
  const int version = movie.isWide ? 1 : 0;
  const std::string dates = number(movie.headerDate, dateBytes) + number(0, dateBytes);
  const auto track = [&](std::uint64_t width, std::uint64_t height) {
    return box("trak",
               fullBox("tkhd", version,
                       dates + number(1, 4) + number(0, 4) + number(0, dateBytes) +
                           std::string(16, '\0') + number(0x10000, 4) + std::string(12, '\0') +
                           number(0x10000, 4) + std::string(12, '\0') + number(0x40000000, 4) +
                           number(width << 16U, 4) + number(height << 16U, 4),
                       7));
  };
  std::string keys;
  std::string values;
  std::uint64_t count = 0;
  const auto add = [&](const std::string& key, const std::string& value) {
    if (value.empty()) return;
    keys += box("mdta", key);
    values += box(number(++count, 4), box("data", number(1, 4) + number(0, 4) + value));
  };
  add("com.apple.quicktime.make", "Apple");
  add("com.apple.quicktime.location.ISO6709", movie.location);
  add("com.apple.quicktime.creationdate", movie.creationDate);
  add("com.apple.quicktime.content.identifier", movie.contentID);
  const std::string handler =
      fullBox("hdlr", 0, number(0, 4) + "mdta" + std::string(12, '\0') + std::string(1, '\0'));
  const std::string inMeta =
      handler + fullBox("keys", 0, number(count, 4) + keys) + box("ilst", values);
  std::string userData = movie.userData;
  if (!movie.userLocation.empty()) {
    userData = box("\xA9xyz",
                   number(movie.userLocation.size(), 2) + number(0x15C7, 2) + movie.userLocation);
  }
  if (movie.isMp4) userData += fullBox("meta", 0, inMeta);
  return box("moov", fullBox("mvhd", version,
                             dates + number(600, 4) + number(0, dateBytes) + number(0x10000, 4) +
                                 std::string(10 + 66, '\0') + number(3, 4)) +
                         track(0, 0) + track(movie.width, movie.height) + box("udta", userData) +
                         (movie.isMp4 ? "" : box("meta", inMeta)));
}

inline std::string film(const Movie& movie, std::size_t mediaBytes = 200'000) {
  const std::string type =
      box("ftyp", (movie.isMp4 ? "mp42" : "qt  ") + number(0, 4) + (movie.isMp4 ? "isom" : "qt  "));
  const std::string media = box("wide", "") + largeBox("mdat", std::string(mediaBytes, 'm'));
  return type + (movie.isFirst ? moov(movie) + media : media + moov(movie));
}

}  // namespace tavrix::testbytes
