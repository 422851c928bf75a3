#pragma once

#include <string>
#include <vector>

#include "device/metadata/MediaMetadata.h"
#include "device/metadata/tests/support/MediaBytes.h"

namespace tavrix::testbytes {

/// A file and the metadata that a reader must find in it.
struct SampleFile {
  std::string name;
  std::string bytes;
  MediaMetadata expected;
};

inline MediaMetadata metadata(const char* date, const char* offset, std::optional<double> lat,
                              std::optional<double> lon, std::int64_t px, std::int64_t py,
                              std::optional<bool> cam) {
  MediaMetadata result;
  result.lat = lat;
  result.lon = lon;
  result.cam = cam;
  if (date != nullptr) result.exifDate = date;
  if (offset != nullptr) result.exifOffset = offset;
  if (px > 0) result.px = px;
  if (py > 0) result.py = py;
  return result;
}

inline Exif rome() {
  Exif exif = capture("2026:05:20 12:00:00", "+03:00");
  exif.gps = position("N", {41, 1, 54, 1, 1234, 100}, "E", {12, 1, 30, 1, 0, 1});
  return exif;
}
inline constexpr double romeLat = 41 + 54 / 60.0 + 12.34 / 3600;
inline constexpr double romeLon = 12.5;

inline std::vector<SampleFile> stills() {
  Exif little = rome();
  little.isLittleEndian = true;
  little.gps = position("S", {33, 1, 5250, 100, 0, 1}, "W", {70, 1, 40, 1, 30, 1});
  Exif digitized{.exif = {text(0x9004, "2020:01:05 12:41:41"), text(0x9012, "-05:30")}};
  const Exif undated{.main = {text(0x010F, "Maker")}};
  const Exif malformed{.exif = {text(0x9003, "0000:00:00 00:00:00"), text(0x9011, "+3")},
                       .gps = position("N", {91, 1, 0, 1, 0, 1}, "E", {12, 1, 0, 1, 0, 1})};
  const Exif noFraction{.exif = {text(0xA434, "Lens")},
                        .gps = position("N", {41, 0, 0, 1, 0, 1}, "E", {12, 1, 0, 1, 0, 1})};
  const std::string far = segment(0xE2, std::string(60'000, 'i'));
  const auto inRome = metadata("2026:05:20 12:00:00", "+03:00", romeLat, romeLon, 4032, 3024, true);
  return {
      {"exif.jpg", jpeg(exifSegment(rome()) + frame(4032, 3024)), inRome},
      {"little-endian.jpg", jpeg(exifSegment(little) + frame(3024, 4032, 0xC2)),
       metadata("2026:05:20 12:00:00", "+03:00", -33.875, -(70 + 40 / 60.0 + 30 / 3600.0), 3024,
                4032, true)},
      {"far-frame.jpg", jpeg(exifSegment(rome()) + far + frame(4032, 3024)), inRome},
      {"digitized.jpg", jpeg(exifSegment(digitized) + frame(10, 20)),
       metadata("2020:01:05 12:41:41", "-05:30", {}, {}, 10, 20, false)},
      {"undated.jpg", jpeg(exifSegment(undated) + frame(10, 20)),
       metadata(nullptr, nullptr, {}, {}, 10, 20, false)},
      {"malformed.jpg", jpeg(exifSegment(malformed) + frame(10, 20)),
       metadata(nullptr, nullptr, {}, {}, 10, 20, false)},
      {"no-fraction.jpg", jpeg(exifSegment(noFraction) + frame(10, 20)),
       metadata(nullptr, nullptr, {}, {}, 10, 20, true)},
      {"plain.jpg", jpeg(segment(0xE0, "JFIF") + frame(640, 480)),
       metadata(nullptr, nullptr, {}, {}, 640, 480, false)},
      {"primary.heic", heif({.width = 4032, .height = 3024, .exif = rome()}), inRome},
      {"wide.heic",
       heif({.width = 4032, .height = 3024, .exif = rome(), .isWide = true, .hasOtherExif = true}),
       inRome},
      {"without-exif.avif", heif({.width = 8, .height = 6}, "avif"),
       metadata(nullptr, nullptr, {}, {}, 8, 6, false)},
      {"before.png", png(1136, 640, chunk("eXIf", tiff(rome()))),
       metadata("2026:05:20 12:00:00", "+03:00", romeLat, romeLon, 1136, 640, true)},
      {"behind.png", png(1136, 640, "", chunk("tEXt", "eXIf") + chunk("eXIf", tiff(rome()))),
       metadata("2026:05:20 12:00:00", "+03:00", romeLat, romeLon, 1136, 640, true)},
      {"screenshot.png", png(1136, 640, ""), metadata(nullptr, nullptr, {}, {}, 1136, 640, false)},
      {"saved.webp", webp(rome(), 4032, 3024), inRome},
      {"saved.bmp", bitmap(640, 480), metadata(nullptr, nullptr, {}, {}, 640, 480, false)},
      {"saved.gif",
       "GIF89a" + reversed(number(320, 2)) + reversed(number(200, 2)) +
           std::string{"\0\0\0\x3B", 4},
       metadata(nullptr, nullptr, {}, {}, 320, 200, false)},
  };
}

/// Returns a DNG file with a preview. The full picture is below it (a subdirectory) or beside it
/// (the next directory).
inline std::string dng(bool isBelow) {
  const auto picture = [](std::uint64_t width, std::uint64_t height, std::uint64_t subfile) {
    return TiffFields{whole(0xFE, subfile), whole(0x100, width), whole(0x101, height)};
  };
  TiffBuilder builder{true};
  TiffFields first = picture(256, 192, 1);
  if (isBelow) first.push_back({0x14A, 4, 4, {0, 0}});
  first.push_back(whole(0x8769, 0));
  const TiffFields exif = rome().exif;
  const std::uint64_t exifAt = builder.offset() + TiffBuilder::sizeOf(first);
  const std::uint64_t fullAt = exifAt + TiffBuilder::sizeOf(exif);
  const std::uint64_t otherAt = fullAt + TiffBuilder::sizeOf(picture(0, 0, 0));
  first.back().values = {exifAt};
  if (isBelow) first[3].values = {fullAt, otherAt};
  builder.add(first, isBelow ? 0 : fullAt);
  builder.add(exif);
  builder.add(picture(4032, 3024, 0), isBelow ? 0 : otherAt);
  builder.add(picture(5000, 4000, 4));
  return builder.bytes();
}

/// Returns a raw file with a version of its own, whose size is that between the sensor's borders.
inline std::string leicaRaw() {
  TiffBuilder builder{true};
  TiffFields first{whole(4, 10), whole(5, 20), whole(6, 3034), whole(7, 4052), whole(0x8769, 0)};
  first.back().values = {builder.offset() + TiffBuilder::sizeOf(first)};
  builder.add(first);
  builder.add(rome().exif);
  return std::string{builder.bytes()}.replace(2, 1, "U");
}

inline std::vector<SampleFile> rawsAndFilms() {
  const char* const date = "2026:05:20 12:00:00";
  constexpr std::uint64_t headerDate = 2'082'844'800U + 1'779'267'600U;  // 2026-05-20T09:00:00Z
  return {
      {"below.dng", dng(true), metadata(date, "+03:00", {}, {}, 4032, 3024, true)},
      {"beside.dng", dng(false), metadata(date, "+03:00", {}, {}, 4032, 3024, true)},
      {"end.mov",
       film({.width = 1920,
             .height = 1080,
             .creationDate = "2026-05-20T12:00:00+0300",
             .location = "+41.9012+012.5000+021.300/",
             .headerDate = headerDate}),
       metadata(date, "+03:00", 41.9012, 12.5, 1920, 1080, {})},
      {"begin.mp4",
       film({.width = 720,
             .height = 1280,
             .creationDate = "2026-05-20T12:00:00-03:30",
             .location = "-4154.5-01230.25/",
             .headerDate = headerDate,
             .isWide = true,
             .isFirst = true,
             .isMp4 = true}),
       metadata(date, "-03:30", -(41 + 54.5 / 60), -(12 + 30.25 / 60), 720, 1280, {})},
      {"header-date.mov",
       film({.width = 640,
             .height = 480,
             .userLocation = "+415430-0123015/",
             .headerDate = headerDate}),
       metadata("2026:05:20 09:00:00", "+00:00", 41 + 54 / 60.0 + 30 / 3600.0,
                -(12 + 30 / 60.0 + 15 / 3600.0), 640, 480, {})},
      {"unix-date.mp4",
       film({.width = 640, .height = 480, .headerDate = 1'779'267'600, .isMp4 = true}),
       metadata("2026:05:20 09:00:00", "+00:00", {}, {}, 640, 480, {})},
      {"undated.mov", film({.width = 640, .height = 480}),
       metadata(nullptr, nullptr, {}, {}, 640, 480, {})},
  };
}

/// Returns well-formed files of rare forms; some cost more ranges than a usual file.
inline std::vector<SampleFile> rareFiles() {
  const auto inRome = metadata("2026:05:20 12:00:00", "+03:00", romeLat, romeLon, 4032, 3024, true);
  Exif smallSides = rome();
  smallSides.gps = position("s", {41, 1, 54, 1, 0, 1}, "w", {12, 1, 30, 1, 0, 1});
  smallSides.gps[1].type = smallSides.gps[3].type = 10;
  Exif noSeconds = rome();
  noSeconds.gps = position("N", {41, 1, 54, 1, 0, 0}, "E", {12, 1, 30, 1, 0, 0});
  const std::string exifChunk = chunk("eXIf", tiff(rome()));
  const std::string longText = chunk("tEXt", "Comment" + std::string(60'000, '\0'));
  const auto uuid = box("uuid", std::string(16, 'u') + "x");
  const Movie movie{.width = 640, .height = 480, .location = "+41.9012+012.5000/"};
  std::string gaps;
  for (int i = 0; i < 100; ++i) gaps += box("free", std::string(20'000, 'f'));
  return {
      {"small-sides.jpg", jpeg(exifSegment(smallSides) + frame(4032, 3024)),
       metadata("2026:05:20 12:00:00", "+03:00", -41.9, -12.5, 4032, 3024, true)},
      {"no-seconds.jpg", jpeg(exifSegment(noSeconds) + frame(4032, 3024)),
       metadata("2026:05:20 12:00:00", "+03:00", {}, {}, 4032, 3024, true)},
      {"second-exif.jpg", jpeg(exifSegment({}) + exifSegment(rome()) + frame(4032, 3024)), inRome},
      {"long-text.png", png(4032, 3024, "", exifChunk + longText), inRome},
      {"text-before.png", png(4032, 3024, "", longText + exifChunk), inRome},
      {"bytes-behind.png", png(4032, 3024, "", exifChunk) + "more", inRome},
      {"first-uuid.mov", uuid + film(movie),
       metadata(nullptr, nullptr, 41.9012, 12.5, 640, 480, {})},
      {"gaps.mov", gaps + film(movie), metadata(nullptr, nullptr, 41.9012, 12.5, 640, 480, {})},
      {"brand.heic", heif({.width = 4032, .height = 3024, .exif = rome()}, "mif2"), inRome},
  };
}

/// Returns well-formed files with content that exiftool does not understand.
inline std::vector<SampleFile> unusualFiles() {
  const auto degrees = [](double value) {
    return number(static_cast<std::uint32_t>(static_cast<std::int32_t>(value * 0x10000)), 4);
  };
  const auto place = [&](const std::string& name) {
    return fullBox("loci", 0,
                   number(0x15C7, 2) + name + number(0, 1) + degrees(12.5) + degrees(-33.875) +
                       number(0, 4) + std::string(8, '\0'));
  };
  const auto placed = [&](const std::string& name) {
    return film({.width = 640, .height = 480, .userData = place(name), .isMp4 = true});
  };
  const auto atPlace = metadata(nullptr, nullptr, -33.875, 12.5, 640, 480, {});
  const auto dated = metadata("2026:05:20 12:00:00", "+03:00", {}, {}, 4032, 3024, true);
  const auto raw = [](const char* version) { return dng(true).replace(2, 2, version, 2); };
  const std::string sequence = moov({.width = 640, .height = 480, .headerDate = 3'862'112'400U});
  return {
      {"place.mp4", placed(std::string{"Rome\0", 5}), atPlace},
      {"wide-place.mp4", placed(std::string{"\xFE\xFF\0R\1\0\0\0", 8}), atPlace},
      {"panasonic.rwl", leicaRaw(), dated},
      {"olympus.orf", raw("RO"), dated},
      {"sequence.hif", box("ftyp", "msf1" + number(0, 4) + "hevc") + sequence,
       metadata("2026:05:20 09:00:00", "+00:00", {}, {}, 640, 480, false)},
      {"dated-sequence.heic",
       heif({.width = 4032, .height = 3024, .exif = rome()}, "hevc") + sequence,
       metadata("2026:05:20 12:00:00", "+03:00", romeLat, romeLon, 4032, 3024, true)},
      {"in-meta.heif",
       heif({.width = 4032, .height = 3024, .exif = rome(), .exifInMeta = true}, "mif1"),
       metadata("2026:05:20 12:00:00", "+03:00", romeLat, romeLon, 4032, 3024, true)},
  };
}

inline std::vector<SampleFile> sampleFiles() {
  std::vector<SampleFile> files = stills();
  for (SampleFile& file : rawsAndFilms()) files.push_back(std::move(file));
  return files;
}

}  // namespace tavrix::testbytes
