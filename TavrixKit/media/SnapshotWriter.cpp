#include <cmath>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/FileSink.h"
#include "media/Snapshot.h"

namespace tavrix {
namespace {

/// Returns nullopt for numbers that JSON cannot represent.
std::optional<double> finite(std::optional<double> number) {
  return number && std::isfinite(*number) ? number : std::nullopt;
}

void writeItem(const SnapshotItem& item, JsonWriter& json) {
  json.beginObject()
      .field("cam", item.cam)
      .field("contentID", item.contentID)
      .field("dir", item.dir)
      .field("exifDate", item.exifDate)
      .field("exifOffset", item.exifOffset)
      .field("itemDate", finite(item.itemDate))
      .field("kind", item.kind)
      .field("lat", finite(item.lat))
      .field("lon", finite(item.lon))
      .field("name", item.name)
      .field("px", item.px)
      .field("py", item.py)
      .field("size", item.size)
      .endObject();
}

}  // namespace

void Snapshot::write(const std::vector<SnapshotItem>& items, TextSink& sink) {
  JsonWriter json{sink};
  json.beginArray();
  for (const SnapshotItem& item : items) writeItem(item, json);
  json.endArray();
  json.finish();
}

void Snapshot::writeLine(const SnapshotItem& item, TextSink& sink) {
  JsonWriter json{sink, JsonLayout::line};
  writeItem(item, json);
  json.finish();
}

void Snapshot::write(const std::vector<SnapshotItem>& items, Folder& folder,
                     const std::string& fileName) {
  writeFileAtomically(folder, fileName, [&](WritableFile& file) {
    FileSink sink{file};
    write(items, sink);
  });
  removeLeftOvers(folder, fileName);
}

}  // namespace tavrix
