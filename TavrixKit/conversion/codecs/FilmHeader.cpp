#include "conversion/codecs/FilmHeader.h"

#include <string>

#include "conversion/platform/Descriptors.h"
#include "device/metadata/FileBytes.h"
#include "device/metadata/IsoBoxes.h"
#include "foundation/files/FileError.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

constexpr std::uint64_t boxHeadBytes = 8;

std::string headOf(std::uint64_t length, std::string_view type) {
  const std::uint64_t size = length + boxHeadBytes;
  if (size > UINT32_MAX) throw ConversionError{ConversionFailure::failed};
  std::string head;
  for (int shift = 24; shift >= 0; shift -= 8) {
    head += static_cast<char>(size >> static_cast<unsigned>(shift));
  }
  return head.append(type);
}

void write(int descriptor, std::uint64_t offset, std::string_view bytes) {
  const auto result = descriptors::writeAt(descriptor, offset, {bytes.data(), bytes.size()});
  if (result < 0) throw FileError{FileOperation::write, {}, static_cast<int>(-result)};
}

/// Returns the end of the header's boxes, without user data at its end.
std::uint64_t endOfTracks(FileBytes& bytes, const IsoBox& moov) {
  IsoBoxes boxes{bytes, moov.begin, moov.end};
  while (const auto box = boxes.next()) {
    if (box->type == "udta" && box->end == moov.end) return box->begin - boxHeadBytes;
  }
  return moov.end;
}

}  // namespace

void setUserData(RangedReader& file, int descriptor, std::string_view box) {
  FileBytes bytes{file};
  IsoBoxes boxes{bytes, 0, bytes.size()};
  auto moov = boxes.next();
  while (moov && moov->type != "moov") moov = boxes.next();
  const auto room = moov ? boxes.next() : std::nullopt;
  const bool isFree = room && room->type == "free" && room->begin == moov->end + boxHeadBytes;
  if (!isFree) throw ConversionError{ConversionFailure::failed};
  const std::uint64_t begin = endOfTracks(bytes, *moov);
  const std::uint64_t end = begin + box.size();
  if (end + boxHeadBytes > room->end) throw ConversionError{ConversionFailure::failed};
  write(descriptor, moov->begin - boxHeadBytes, headOf(end - moov->begin, "moov"));
  write(descriptor, begin, box);
  write(descriptor, end, headOf(room->end - boxHeadBytes - end, "free"));
}

}  // namespace tavrix
