#include "device/metadata/MediaFormat.h"

#include <algorithm>
#include <array>

#include "device/metadata/HeifItems.h"

namespace tavrix {
namespace {

/// Bytes at an offset that identify a file format. Without `format`, the boxes of the file decide.
struct Mark {
  std::size_t offset;
  std::string_view bytes;
  std::optional<MediaFormat> format;
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

/// The first match is used. Films without "ftyp" are older QuickTime files.
constexpr auto marks = [] {
  using enum MediaFormat;
  constexpr auto byBoxes = std::nullopt;
  return std::array<Mark, 29>{{
      {0, "\xFF\xD8\xFF", jpeg},
      {0, "\x89PNG\r\n\x1A\n", png},
      {0, {"II\x2A\0", 4}, tiff},
      {0, {"MM\0\x2A", 4}, tiff},
      {0, {"IIU\0", 4}, tiff},
      {0, "IIRO", tiff},
      {0, "IIRS", tiff},
      {4, "ftypheic", heif},
      {4, "ftypheix", heif},
      {4, "ftypheim", heif},
      {4, "ftypheis", heif},
      {4, "ftyphevc", heif},
      {4, "ftyphevx", heif},
      {4, "ftypmif1", heif},
      {4, "ftypmsf1", heif},
      {4, "ftypavif", heif},
      {4, "ftypavis", heif},
      {4, "ftyp", byBoxes},
      {4, "uuid", byBoxes},
      {4, "moov", movie},
      {4, "mdat", movie},
      {4, "wide", movie},
      {4, "free", movie},
      {4, "skip", movie},
      {4, "pnot", movie},
      {0, "GIF87a", gif},
      {0, "GIF89a", gif},
      {8, "WEBP", webp},
      {0, "BM", bmp},
  }};
}();

}  // namespace

std::optional<MediaFormat> mediaFormatOf(FileBytes& file) {
  const auto head = file.at(0, magicBytes);
  if (!head) return std::nullopt;
  const auto* const found = std::find_if(marks.begin(), marks.end(), [&](const Mark& mark) {
    return head->substr(mark.offset).starts_with(mark.bytes);
  });
  if (found == marks.end()) return std::nullopt;
  if (found->format) return found->format;
  return isHeif(file) ? MediaFormat::heif : MediaFormat::movie;
}

}  // namespace tavrix
