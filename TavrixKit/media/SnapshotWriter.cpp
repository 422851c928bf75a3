#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "media/Snapshot.h"

namespace tavrix {
namespace {

class FileSink : public TextSink {
 public:
  explicit FileSink(WritableFile& file) : file_(file) {}
  void write(std::string_view text) override { file_.append(std::as_bytes(std::span{text})); }

 private:
  WritableFile& file_;
};

}  // namespace

void Snapshot::write(const std::vector<SnapshotItem>& items, TextSink& sink) {
  JsonWriter json{sink};
  json.beginArray();
  for (const SnapshotItem& item : items) {
    json.beginObject()
        .field("cam", item.cam)
        .field("dir", item.dir)
        .field("exifDate", item.exifDate)
        .field("exifOffset", item.exifOffset)
        .field("itemDate", item.itemDate)
        .field("kind", item.kind)
        .field("lat", item.lat)
        .field("lon", item.lon)
        .field("name", item.name)
        .field("px", item.px)
        .field("py", item.py)
        .field("size", item.size)
        .endObject();
  }
  json.endArray();
  json.finish();
}

void Snapshot::write(const std::vector<SnapshotItem>& items, Folder& folder, const std::string& fileName) {
  writeFileAtomically(folder, fileName, [&](WritableFile& file) {
    FileSink sink{file};
    write(items, sink);
  });
}

}  // namespace tavrix
