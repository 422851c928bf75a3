#include "conversion/codecs/FilmConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

#include "conversion/codecs/FilmHeader.h"
#include "conversion/codecs/FilmMetadata.h"
#include "conversion/codecs/PictureFilter.h"
#include "conversion/platform/DescriptorReader.h"
#include "conversion/platform/Descriptors.h"
#include "foundation/files/FileError.h"
#include "transfer/MediaConverter.h"

extern "C" {
#include <libavutil/dovi_meta.h>
}

namespace tavrix {
namespace {

/// Returns true for Dolby Vision pictures that only Dolby Vision players show in the right colours.
bool needsDolbyVision(const AVStream& pictures) {
  std::size_t bytes = 0;
  const auto* const data = av_stream_get_side_data(&pictures, AV_PKT_DATA_DOVI_CONF, &bytes);
  if (data == nullptr || bytes < sizeof(AVDOVIDecoderConfigurationRecord)) return false;
  const auto& record = *reinterpret_cast<const AVDOVIDecoderConfigurationRecord*>(data);
  return record.dv_bl_signal_compatibility_id == 0;
}

/// Returns true if the film is in a QuickTime or MP4 file and has pictures as the result will have.
bool hasPlainH264(const FilmSource& film) {
  const AVCodecParameters& pictures = *film.picture().codecpar;
  return pictures.codec_id == AV_CODEC_ID_H264 && film.isIsoFile() && pictures.extradata_size > 0 &&
         isPlainPicture(pictures) && !isHighDynamicRange(pictures);
}

/// Returns true if the pictures can be copied unchanged into another file.
bool canBeCarried(const FilmSource& film) { return hasPlainH264(film) && film.showsAllPictures(); }

bool isMp4(const FilmSource& film) {
  constexpr std::array<std::string_view, 8> brands{"iso",  "mp41", "mp42", "avc1",
                                                   "M4V ", "MSNV", "XAVC", "f4v "};
  const std::string brand = film.tag("major_brand").value_or("");
  return std::ranges::any_of(brands,
                             [&](std::string_view each) { return brand.starts_with(each); });
}

/// Returns true if the file is an MP4 file of H.264 with AAC, so that nothing is left to convert.
bool isAlreadyConverted(const FilmSource& film) {
  const bool isInFragments = film.picture().nb_frames == 0;
  if (!hasPlainH264(film) || !isMp4(film) || isInFragments) return false;
  const std::span streams{film.format().streams, film.format().nb_streams};
  return std::ranges::all_of(streams, [&](const AVStream* stream) {
    const AVCodecParameters& codec = *stream->codecpar;
    if (codec.codec_type == AVMEDIA_TYPE_AUDIO) return codec.codec_id == AV_CODEC_ID_AAC;
    const bool isCover = (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
    return codec.codec_type != AVMEDIA_TYPE_VIDEO || isCover || stream == &film.picture();
  });
}

std::string userDataOf(const FilmSource& film, int descriptor) {
  DescriptorReader reader{descriptor};
  auto location = film.tag("com.apple.quicktime.location.ISO6709");
  if (!location) location = film.tag("location");
  return userDataBox(withLocation(readFilmMetadata(reader), location.value_or("")));
}

}  // namespace

FilmConversion::FilmConversion(const ConversionFiles& files, const ConversionProgress& progress)
    : files_(files),
      progress_(progress),
      source_(files.source),
      writer_(files.result),
      userData_(userDataOf(source_, files.source)) {
  if (needsDolbyVision(source_.picture()))
    throw ConversionError{ConversionFailure::unsupportedColour};
}

ConversionResult FilmConversion::run() {
  if (isAlreadyConverted(source_)) return takeWhole();
  addTracks();
  copyDate();
  writer_.begin(roomForHeader());
  carry();
  writer_.finish();
  if (!userData_.empty()) {
    DescriptorReader result{files_.result};
    setUserData(result, files_.result, userData_);
  }
  requireFilm(files_.result, expected(tracks_.at(source_.picture().index)->written()));
  return result();
}

/// Copies the file byte for byte, with all that other programs keep in it. It is read as a film
/// first, so that a truncated one is refused, and checked like any other result.
ConversionResult FilmConversion::takeWhole() {
  carry();
  DescriptorReader source{files_.source};
  std::vector<char> buffer(std::size_t{1} << 20U);
  std::uint64_t at = 0;
  while (const std::size_t count = source.read(at, buffer)) {
    const auto written = descriptors::writeAt(files_.result, at, std::span{buffer}.first(count));
    if (written < 0) throw FileError{FileOperation::write, {}, static_cast<int>(-written)};
    at += count;
    if (progress_) progress_(told_);
  }
  requireFilm(files_.result, expected(source_.indexedPictures()));
  return result();
}

ConversionResult FilmConversion::result() const {
  const ShownSize size = squareSize(source_);
  return {.width = size.width,
          .height = size.height,
          .milliseconds = static_cast<std::uint64_t>(std::llround(seconds() * 1000))};
}

void FilmConversion::addTracks() {
  const AVStream& picture = source_.picture();
  tracks_[picture.index] =
      canBeCarried(source_) ? copiedTrack(picture, writer_) : encodedPictures(picture, writer_);
  if (const auto matrix = source_.displayMatrix())
    writer_.setDisplayMatrix(*writer_.format().streams[0], *matrix);
  for (const AVStream* const sound : source_.sounds()) {
    const bool isAac = sound->codecpar->codec_id == AV_CODEC_ID_AAC;
    tracks_[sound->index] = isAac ? copiedTrack(*sound, writer_) : encodedSounds(*sound, writer_);
  }
}

void FilmConversion::copyDate() {
  if (const auto date = source_.tag("creation_time"))
    av_dict_set(&writer_.format().metadata, "creation_time", date->c_str(), 0);
}

/// Passes every packet to its track if it has one; the packets of the pictures give the progress.
void FilmConversion::carry() {
  const av::Packet packet = av::makePacket();
  while (source_.next(*packet)) {
    if (packet->stream_index == source_.picture().index) see(*packet);
    const auto track = tracks_.find(packet->stream_index);
    if (track != tracks_.end()) track->second->take(*packet);
    av_packet_unref(packet.get());
  }
  for (auto& [number, track] : tracks_) track->finish();
}

void FilmConversion::see(const AVPacket& packet) {
  const std::int64_t time = packet.pts == AV_NOPTS_VALUE ? packet.dts : packet.pts;
  if (time == AV_NOPTS_VALUE || (packet.flags & AV_PKT_FLAG_DISCARD) != 0) return;
  begin_ = std::min(begin_, time);
  end_ = std::max(end_, time + std::max<std::int64_t>(packet.duration, 0));
  tell(time);
}

void FilmConversion::tell(std::int64_t time) {
  constexpr double step = 0.001;
  constexpr int patience = 10;  // pictures; the parent kills a process that is silent for long
  const double seconds = source_.seconds().value_or(0);
  const double done = static_cast<double>(time - begin_) * av_q2d(source_.picture().time_base);
  const double fraction = seconds > 0 ? std::clamp(done / seconds, told_, 1.0) : told_;
  if (!progress_ || (fraction < told_ + step && ++untold_ < patience)) return;
  told_ = fraction;
  untold_ = 0;
  progress_(fraction);
}

std::uint64_t FilmConversion::roomForHeader() const {
  const double seconds = source_.seconds().value_or(0);
  const AVStream& picture = source_.picture();
  // If no index counts the pictures, assume more than any phone films in that time.
  constexpr double picturesInSecond = 300;
  std::uint64_t pictures = static_cast<std::uint64_t>(seconds * picturesInSecond);
  if (picture.nb_frames > 0) pictures = static_cast<std::uint64_t>(picture.nb_frames);
  pictures = std::max(pictures, static_cast<std::uint64_t>(source_.indexedPictures()));
  std::uint64_t sounds = 0;
  for (const AVStream* const sound : source_.sounds()) {
    constexpr double samplesInPacket = 960;
    const double packets = seconds * sound->codecpar->sample_rate / samplesInPacket;
    const auto listed = avformat_index_get_entries_count(sound);
    sounds += std::max(static_cast<std::uint64_t>(packets), static_cast<std::uint64_t>(listed));
  }
  return headerBytes(pictures, sounds, tracks_.size()) + userData_.size();
}

double FilmConversion::seconds() const {
  const AVRational unit = source_.picture().time_base;
  const double seen = end_ > begin_ ? static_cast<double>(end_ - begin_) * av_q2d(unit) : 0;
  // Only the header has the duration of the last picture; in some file formats it is a guess.
  const double told = source_.seconds().value_or(seen);
  const bool isToBelieve = source_.isIsoFile() || std::abs(told - seen) <= durationTolerance;
  return isToBelieve ? told : seen;
}

ExpectedFilm FilmConversion::expected(std::int64_t pictures) const {
  return {.size = shownSize(source_),
          .matrix = source_.displayMatrix(),
          .seconds = seconds(),
          .pictures = pictures,
          .sounds = source_.sounds().size()};
}

}  // namespace tavrix
