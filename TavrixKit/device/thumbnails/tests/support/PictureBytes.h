#pragma once

#include <string>
#include <utility>
#include <vector>

#include "device/metadata/tests/support/MediaBytes.h"
#include "device/metadata/tests/support/SampleFiles.h"

/// Builds the bytes of files with pictures inside, for tests. None can be decoded.
namespace tavrix::testbytes {

inline std::string smallJpeg(std::uint64_t width, std::uint64_t height, int marker = 0xC0) {
  return jpeg(frame(width, height, marker));
}

/// The content of a JPEG photo to build.
struct Photo {
  int orientation = 1;
  std::string thumbnail = smallJpeg(160, 120);
  std::uint64_t thumbnailBytes = thumbnail.size();                ///< as the file says
  std::vector<std::pair<std::uint64_t, std::string>> previews{};  ///< type and JPEG file of each
  std::string after = frame(4032, 3024);  ///< the segments after Exif and list of previews
};

/// Returns an Exif block with a thumbnail.
inline std::string exifWithThumbnail(const Photo& photo) {
  TiffBuilder builder;
  const TiffFields main{{0x0112, 3, 2, {static_cast<std::uint64_t>(photo.orientation)}}};
  TiffFields second{whole(0x0201, 0), whole(0x0202, photo.thumbnailBytes)};
  const std::uint64_t secondAt = builder.offset() + TiffBuilder::sizeOf(main);
  second[0].values = {secondAt + TiffBuilder::sizeOf(second)};
  builder.add(main, secondAt);
  builder.add(second);
  return builder.bytes() + photo.thumbnail;
}

/// Returns a JPEG file. Its previews follow its picture.
inline std::string photo(const Photo& photo) {
  const std::string start =
      "\xFF\xD8" + segment(0xE1, std::string{"Exif\0\0", 6} + exifWithThumbnail(photo));
  const auto list = [&](std::uint64_t previewsAt) {
    TiffField entries{0xB002, 7, 1, std::vector<std::uint64_t>(16)};
    for (const auto& [type, bytes] : photo.previews) {
      const std::string entry =
          number(type, 4) + number(bytes.size(), 4) + number(previewsAt, 4) + number(0, 4);
      for (const char c : entry) entries.values.push_back(static_cast<unsigned char>(c));
      previewsAt += bytes.size();
    }
    TiffBuilder builder;
    builder.add({entries});
    return segment(0xE2, std::string{"MPF\0", 4} + builder.bytes());
  };
  const std::string end = jpeg(photo.after).substr(2);
  // Offsets count from the TIFF header, which follows marker, length and mark.
  std::string bytes = start + list(list(0).size() - 8 + end.size()) + end;
  for (const auto& [type, preview] : photo.previews) bytes += preview;
  return bytes;
}

/// The content of a HEIF file of 4032 × 3024 pixels to build.
struct ItemPicture {
  std::uint64_t width = 320;  ///< of the thumbnail item
  std::uint64_t height = 240;
  bool isItem = true;  ///< if false, the thumbnail is in the Exif block
  std::string turn{};  ///< of the picture; no property if empty
  std::string mirror{};
  std::string ownTurn{};  ///< of the thumbnail item
  std::string media = std::string(20'000, 't');
  std::size_t gapBytes = 100'000;  ///< between the list of items and their bytes
};

/// Returns a HEIF file. Items: 1 the primary picture, 2 its thumbnail, 3 its Exif block.
inline std::string pictureWithItem(const ItemPicture& picture) {
  const auto item = [&](std::uint64_t id, const std::string& type) {
    return fullBox("infe", 2, number(id, 2) + number(0, 2) + type + std::string(1, '\0'));
  };
  const auto size = [](std::uint64_t width, std::uint64_t height) {
    return fullBox("ispe", 0, number(width, 4) + number(height, 4));
  };
  std::string properties;
  std::uint64_t count = 0;
  const auto entry = [&](std::uint64_t id, const std::vector<std::string>& own) {
    std::string indexes;
    for (const std::string& property : own) {
      properties += property;
      indexes += number(++count, 1);
    }
    return number(id, 2) + number(indexes.size(), 1) + indexes;
  };
  std::vector<std::string> ofPrimary{size(4032, 3024)};
  if (!picture.turn.empty()) ofPrimary.push_back(box("irot", picture.turn));
  if (!picture.mirror.empty()) ofPrimary.push_back(box("imir", picture.mirror));
  std::vector<std::string> ofThumbnail{box("colr", "colours"), box("auxC", "other"),
                                       box("hvcC", "configuration"),
                                       size(picture.width, picture.height)};
  if (!picture.ownTurn.empty()) ofThumbnail.push_back(box("irot", picture.ownTurn));
  const std::string entries = entry(1, ofPrimary) + entry(2, ofThumbnail);
  const std::string refers =
      picture.isItem ? box("thmb", number(2, 2) + number(1, 2) + number(1, 2)) : "";
  const std::string exif = number(0, 4) + exifWithThumbnail({});
  const std::string gap(picture.gapBytes, 'g');
  const auto meta = [&](std::uint64_t mediaAt) {
    const auto place = [](std::uint64_t id, std::uint64_t at, std::size_t length) {
      return number(id, 2) + number(0, 2) + number(1, 2) + number(at, 4) + number(length, 4);
    };
    return fullBox(
        "meta", 0,
        fullBox("pitm", 0, number(1, 2)) +
            fullBox("iinf", 0, number(3, 2) + item(1, "grid") + item(2, "hvc1") + item(3, "Exif")) +
            fullBox("iref", 0, refers) +
            box("iprp", box("ipco", properties) + fullBox("ipma", 0, number(2, 4) + entries)) +
            fullBox("iloc", 0,
                    number(0x4400, 2) + number(2, 2) + place(3, mediaAt + gap.size(), exif.size()) +
                        place(2, mediaAt + gap.size() + exif.size(), picture.media.size())));
  };
  const std::string type = box("ftyp", "heic" + number(0, 4) + "mif1" + "heic");
  return type + meta(type.size() + meta(0).size() + 8) + box("mdat", gap + exif + picture.media);
}

struct Raw {
  bool hasPreviews = true;
  std::size_t gapBytes = 100'000;  ///< between the directories and the pictures
};

/// Returns a DNG file of 4032 × 3024 pixels with previews of 256 and 1024, the larger one first,
/// and sensor values in a lossless JPEG file.
inline std::string raw(const Raw& raw) {
  const std::string gap(raw.gapBytes, 'g');
  const std::array<std::string, 3> files{smallJpeg(1024, 768) + std::string(3000, 'p'),
                                         smallJpeg(256, 192), smallJpeg(4032, 3024, 0xC3)};
  const auto picture = [&](std::uint64_t width, std::uint64_t height, bool isFull, std::uint64_t at,
                           std::size_t length) {
    return TiffFields{whole(0xFE, isFull ? 0 : 1),
                      whole(0x100, width),
                      whole(0x101, height),
                      whole(0x103, 7),
                      whole(0x111, at),
                      whole(0x117, length)};
  };
  TiffBuilder builder{true};
  TiffFields first{
      whole(0xFE, 1), {0x112, 3, 2, {8}}, {0x14A, 4, 4, {0, 0, 0}}, whole(0xC612, 0x01040000)};
  const std::uint64_t each = TiffBuilder::sizeOf(picture(0, 0, false, 0, 0));
  const std::uint64_t begin = builder.offset() + TiffBuilder::sizeOf(first);
  first[2].values = {begin, begin + each, begin + 2 * each};
  builder.add(first);
  const std::uint64_t at = begin + 3 * each + gap.size();
  const bool isAbsent = !raw.hasPreviews;
  builder.add(picture(1024, 768, false, isAbsent ? 1U << 31U : at, files[0].size()));
  builder.add(
      picture(256, 192, false, isAbsent ? 1U << 31U : at + files[0].size(), files[1].size()));
  builder.add(picture(4032, 3024, true, at + files[0].size() + files[1].size(), files[2].size()));
  return builder.bytes() + gap + files[0] + files[1] + files[2];
}

/// The layout of a film of six samples, in chunks of one, two, two and one.
struct FilmLayout {
  bool isFirst = false;            ///< the film's header comes before its media
  std::uint64_t keySample = 3;     ///< the first key sample; 0 if the film does not list any
  bool isLarge = false;            ///< 64-bit offsets
  std::size_t gapBytes = 100'000;  ///< of sound before the pictures
  std::string filmHeader{};        ///< content of "mvhd"; no such box if it is empty
};

inline std::string sampleOfFilm(std::uint64_t number) {
  return std::string(100 * number, static_cast<char>('0' + number));
}

/// Returns matrix and size of a track that is turned to the right.
inline std::string turnedGeometry() {
  return number(0, 4) + number(0x10000, 4) + number(0, 4) + number(0xFFFF0000, 4) +
         std::string(8, '\0') + number(1080U << 16U, 4) + number(0, 4) + number(0x40000000, 4) +
         number(1920U << 16U, 4) + number(1080U << 16U, 4);
}

inline std::string trackOf(const std::string& handler, std::uint64_t flags,
                           const std::string& table) {
  return box("trak",
             fullBox("tkhd", 0, std::string(36, '\0') + turnedGeometry(), flags) +
                 box("mdia", fullBox("hdlr", 0, number(0, 4) + handler + std::string(13, '\0')) +
                                 box("minf", box("stbl", table))));
}

/// Returns a film with a track of sound, a hidden track of pictures and the track of the film.
inline std::string shortFilm(const FilmLayout& layout) {
  const std::string sound(layout.gapBytes, 's');
  const std::array<std::vector<std::uint64_t>, 4> chunks{{{1}, {2, 3}, {4, 5}, {6}}};
  std::string media = sound;
  std::vector<std::uint64_t> offsets;
  for (const auto& chunk : chunks) {
    offsets.push_back(media.size());
    for (const std::uint64_t sample : chunk) media += sampleOfFilm(sample);
    media += "sound";
  }
  const auto entry = [](const std::string& type, const std::string& content) {
    return box(type, std::string(24, '\0') + number(1920, 2) + number(1080, 2) +
                         std::string(50, '\0') + content);
  };
  const auto header = [&](std::uint64_t mediaAt) {
    std::string sizes;
    for (std::uint64_t i = 1; i <= 6; ++i) sizes += number(100 * i, 4);
    std::string places;
    for (const std::uint64_t offset : offsets)
      places += number(mediaAt + offset, layout.isLarge ? 8 : 4);
    const auto run = [](std::uint64_t first, std::uint64_t samples, std::uint64_t description) {
      return number(first, 4) + number(samples, 4) + number(description, 4);
    };
    const std::string table =
        fullBox(
            "stsd", 0,
            number(2, 4) + entry("avc1", "other") + entry("hvc1", box("hvcC", "configuration"))) +
        (layout.keySample == 0
             ? ""
             : fullBox("stss", 0, number(2, 4) + number(layout.keySample, 4) + number(6, 4))) +
        fullBox("stsc", 0, number(3, 4) + run(1, 1, 2) + run(2, 2, 2) + run(4, 1, 2)) +
        fullBox("stsz", 0, number(0, 4) + number(6, 4) + sizes) +
        fullBox(layout.isLarge ? "co64" : "stco", 0, number(4, 4) + places);
    const std::string film = layout.filmHeader.empty() ? "" : box("mvhd", layout.filmHeader);
    return box("moov", film + trackOf("soun", 1, "") + trackOf("vide", 0, "") +
                           trackOf("vide", 1, table) +
                           box("free", std::string(layout.gapBytes / 5, 'f')));
  };
  const std::string type = box("ftyp", "qt  " + number(0, 4) + "qt  ");
  if (!layout.isFirst) return type + box("mdat", media) + header(type.size() + 8);
  return type + header(type.size() + header(0).size() + 8) + box("mdat", media);
}

}  // namespace tavrix::testbytes
