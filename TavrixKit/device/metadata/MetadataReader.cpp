#include "device/metadata/MetadataReader.h"

#include <algorithm>
#include <array>

#include "device/metadata/Containers.h"
#include "device/metadata/HeifItems.h"

namespace tavrix {
namespace {

using Read = MediaMetadata (*)(FileBytes&);

/// Bytes at an offset that identify a file format, and the reader of the format.
struct Mark {
  std::size_t offset;
  std::string_view bytes;
  Read read;
};

constexpr std::size_t magicBytes = 12;

/// Returns true if a file contains pictures, for files whose brand does not say so. Such a file has
/// a "meta" box with a primary picture where a film has "moov".
bool isHeif(FileBytes& file) {
  IsoBoxes boxes{file, 0, file.size()};
  while (const auto box = boxes.next()) {
    if (box->type == "moov") return false;
    if (box->type != "meta") continue;
    const auto items = HeifItems::open(file);
    return items && items->primary() != 0;
  }
  return false;
}

MediaMetadata readByBoxes(FileBytes& file) {
  return isHeif(file) ? readHeif(file) : readMovie(file);
}

/// The first match is used. Films without "ftyp" are older QuickTime files.
constexpr std::array<Mark, 26> marks{{
    {0, "\xFF\xD8\xFF", readJpeg},  {0, "\x89PNG\r\n\x1A\n", readPng},
    {0, {"II\x2A\0", 4}, readTiff}, {0, {"MM\0\x2A", 4}, readTiff},
    {4, "ftypheic", readHeif},      {4, "ftypheix", readHeif},
    {4, "ftypheim", readHeif},      {4, "ftypheis", readHeif},
    {4, "ftyphevc", readHeif},      {4, "ftyphevx", readHeif},
    {4, "ftypmif1", readHeif},      {4, "ftypmsf1", readHeif},
    {4, "ftypavif", readHeif},      {4, "ftypavis", readHeif},
    {4, "ftyp", readByBoxes},       {4, "uuid", readByBoxes},
    {4, "moov", readMovie},         {4, "mdat", readMovie},
    {4, "wide", readMovie},         {4, "free", readMovie},
    {4, "skip", readMovie},         {4, "pnot", readMovie},
    {0, "GIF87a", readGif},         {0, "GIF89a", readGif},
    {8, "WEBP", readWebp},          {0, "BM", readBmp},
}};

}  // namespace

MediaMetadata MetadataReader::read(RangedReader& file) {
  FileBytes bytes{file};
  const auto head = bytes.at(0, magicBytes);
  if (!head) return {};
  const auto* const found = std::find_if(marks.begin(), marks.end(), [&](const Mark& mark) {
    return head->substr(mark.offset).starts_with(mark.bytes);
  });
  return found == marks.end() ? MediaMetadata{} : found->read(bytes);
}

}  // namespace tavrix
