#include <algorithm>

#include "device/metadata/Bytes.h"
#include "device/metadata/IsoBoxes.h"
#include "device/thumbnails/IsoBoxWriter.h"
#include "device/thumbnails/MovieAssembly.h"
#include "device/thumbnails/PicturePart.h"
#include "device/thumbnails/SampleTables.h"

namespace tavrix {
namespace {

constexpr std::uint64_t maxDescriptionBytes = 64 * 1024;
constexpr std::uint64_t geometryBytes = 44;

struct Track {
  IsoBox header;
  IsoBox media;
  bool isEnabled = false;
};

/// Returns the header and the media of a track of pictures.
std::optional<Track> pictureTrack(FileBytes& file, const IsoBox& track) {
  const auto header = IsoBoxes::find(file, track.begin, track.end, "tkhd");
  const auto media = IsoBoxes::find(file, track.begin, track.end, "mdia");
  if (!header || !media || header->length() < geometryBytes + 4) return std::nullopt;
  const auto handler = IsoBoxes::find(file, media->begin, media->end, "hdlr");
  const auto flags = file.at(header->begin, 4);
  if (!handler || handler->length() < 12 || !flags) return std::nullopt;
  if (file.at(handler->begin + 8, 4) != "vide") return std::nullopt;
  return Track{*header, *media, (bigEndian(*flags) & 1U) != 0};
}

/// Returns the first track of pictures that is shown, else the first one.
std::optional<Track> filmTrack(FileBytes& file, const IsoBox& header) {
  std::optional<Track> first;
  IsoBoxes boxes{file, header.begin, header.end};
  while (const auto box = boxes.next()) {
    const auto track = box->type == "trak" ? pictureTrack(file, *box) : std::nullopt;
    if (!track) continue;
    if (track->isEnabled) return track;
    if (!first) first = track;
  }
  return first;
}

/// Returns the description of samples at a position, counted from 1.
std::optional<IsoBox> descriptionAt(FileBytes& file, const IsoBox& table, std::uint64_t position) {
  const auto list = IsoBoxes::find(file, table.begin, table.end, "stsd");
  if (!list || list->length() <= 8) return std::nullopt;
  IsoBoxes boxes{file, list->begin + 8, list->end};
  for (std::uint64_t i = 1; const auto box = boxes.next(); ++i) {
    if (i == position) return box;
  }
  return std::nullopt;
}

std::optional<PicturePart> keyFrame(FileBytes& file, const Track& track) {
  const auto information = IsoBoxes::find(file, track.media.begin, track.media.end, "minf");
  if (!information) return std::nullopt;
  const auto table = IsoBoxes::find(file, information->begin, information->end, "stbl");
  const auto sample = table ? firstKeySample(file, *table) : std::nullopt;
  if (!sample || sample->length > std::uint64_t{1} << 30U) return std::nullopt;
  const auto description = descriptionAt(file, *table, sample->description);
  // Width and height come after 24 bytes of the description of a picture.
  constexpr std::uint64_t sizeAt = 24;
  if (!description || description->length() < sizeAt + 4) return std::nullopt;
  if (description->length() > maxDescriptionBytes) return std::nullopt;
  const auto content = contentOf(file, *description);
  const auto geometry = file.at(track.header.end - geometryBytes, geometryBytes);
  if (!content || !geometry) return std::nullopt;
  PicturePart part{EmbeddedPicture::Origin::keyFrame, sample->begin, sample->length, {}, {}, 0};
  part.size = {bigEndian(content->substr(sizeAt, 2)), bigEndian(content->substr(sizeAt + 2, 2))};
  part.head =
      movieHead({isobox::box(description->type, *content), std::string{*geometry}}, sample->length);
  return part;
}

/// Returns the playing time in the header of a film. Returns nullopt if it is absent or unknown, as
/// in a film of fragments.
std::optional<std::chrono::milliseconds> filmLength(FileBytes& file, const IsoBox& movie) {
  const auto header = IsoBoxes::find(file, movie.begin, movie.end, "mvhd");
  const auto version = header ? file.at(header->begin, 1) : std::nullopt;
  if (!version) return std::nullopt;
  // Version, flags and two dates come before the units per second and the length in units.
  const bool isLong = version->front() != 0;
  const std::uint64_t unitsAt = isLong ? 20 : 12;
  const std::size_t lengthBytes = isLong ? 8 : 4;
  if (header->length() < unitsAt + 4 + lengthBytes) return std::nullopt;
  const auto bytes = file.at(header->begin + unitsAt, 4 + lengthBytes);
  if (!bytes) return std::nullopt;
  const std::uint64_t unitsInSecond = bigEndian(bytes->substr(0, 4));
  const std::uint64_t length = bigEndian(bytes->substr(4));
  constexpr std::uint64_t longestSeconds = std::uint64_t{1000} * 60 * 60;
  if (unitsInSecond == 0 || length == 0 || length / unitsInSecond > longestSeconds) {
    return std::nullopt;
  }
  // Within the limit a length times a thousand fits.
  return std::chrono::milliseconds{length * 1000 / unitsInSecond};
}

}  // namespace

void fetchAfterMedia(FileBytes& file) {
  // A longer header is fetched part by part, as far as it is needed.
  constexpr std::uint64_t mostAtOnce = 128 * 1024;
  IsoBoxes boxes{file, 0, file.size()};
  while (const auto box = boxes.next()) {
    if (box->type == "moov" || box->type == "meta") return;
    if (box->type != "mdat") continue;
    const std::uint64_t left = file.size() - box->end;
    if (left > 0) file.at(box->end, static_cast<std::size_t>(std::min(left, mostAtOnce)));
    return;
  }
}

PictureParts movieParts(FileBytes& file) {
  PictureParts result;
  fetchAfterMedia(file);
  const auto header = IsoBoxes::find(file, 0, file.size(), "moov");
  const auto track = header ? filmTrack(file, *header) : std::nullopt;
  if (header) result.filmLength = filmLength(file, *header);
  if (!track) return result;
  if (auto part = keyFrame(file, *track)) result.parts.push_back(std::move(*part));
  return result;
}

}  // namespace tavrix
