// QuickTime File Format: a film with one track of one sample.

#include "device/thumbnails/MovieAssembly.h"

#include "device/thumbnails/IsoBoxWriter.h"

namespace tavrix {
namespace {

using isobox::box;
using isobox::fullBox;
using isobox::number;

constexpr std::uint64_t unitsPerSecond = 600;
constexpr std::uint64_t duration = unitsPerSecond;

std::string zeros(std::size_t count) { return std::string(count, '\0'); }

std::string movieHeader() {
  const std::string matrix =
      number(0x10000, 4) + zeros(12) + number(0x10000, 4) + zeros(12) + number(0x40000000, 4);
  return fullBox("mvhd", 0,
                 zeros(8) + number(unitsPerSecond, 4) + number(duration, 4) + number(0x10000, 4) +
                     zeros(12) + matrix + zeros(24) + number(2, 4));
}

std::string trackHeader(std::string_view geometry) {
  // The track is enabled, and is part of the film.
  constexpr std::uint64_t flags = 3;
  return fullBox(
      "tkhd", flags,
      zeros(8) + number(1, 4) + zeros(4) + number(duration, 4) + zeros(16) + std::string{geometry});
}

std::string mediaHeaders() {
  return fullBox("mdhd", 0, zeros(8) + number(unitsPerSecond, 4) + number(duration, 4) + zeros(4)) +
         fullBox("hdlr", 0, std::string{"mhlrvide"} + zeros(13));
}

/// Returns the sample table. The sample is at an offset of the file.
std::string sampleTable(std::string_view description, std::uint64_t offset, std::uint64_t length) {
  const std::string one = number(1, 4);
  return box("stbl", fullBox("stsd", 0, one + std::string{description}) +
                         fullBox("stts", 0, one + one + number(duration, 4)) +
                         fullBox("stsc", 0, one + one + one + one) +
                         fullBox("stsz", 0, number(length, 4) + one) +
                         fullBox("stco", 0, one + number(offset, 4)));
}

std::string movie(const OneSampleTrack& track, std::uint64_t offset, std::uint64_t length) {
  const std::string sameFile = fullBox("url ", 1, "");
  const std::string media = fullBox("vmhd", 1, zeros(8)) +
                            box("dinf", fullBox("dref", 0, number(1, 4) + sameFile)) +
                            sampleTable(track.description, offset, length);
  return box("moov",
             movieHeader() + box("trak", trackHeader(track.geometry) +
                                             box("mdia", mediaHeaders() + box("minf", media))));
}

}  // namespace

std::string movieHead(const OneSampleTrack& track, std::uint64_t length) {
  const std::string start = box("ftyp", std::string{"qt  "} + number(0, 4) + "qt  ");
  const std::string media = isobox::boxHead("mdat", length);
  const std::size_t offset = start.size() + movie(track, 0, length).size() + media.size();
  return start + movie(track, offset, length) + media;
}

}  // namespace tavrix
