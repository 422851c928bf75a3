#include "device/metadata/CacheLine.h"

#include <string>

#include "foundation/json/PlainJson.h"
#include "foundation/json/TextReader.h"
#include "media/Snapshot.h"

namespace tavrix {
namespace {

std::optional<SnapshotItem> plainRecord(std::string_view text) {
  std::optional<SnapshotItem> item{std::in_place};
  PlainJson line{text};
  const auto takeField = [&](std::string_view key, auto& value) {
    return line.takeField(key, value, ",");
  };
  const bool isPlain =
      line.take("{") && takeField("\"cam\":", item->cam) &&
      takeField("\"contentID\":", item->contentID) && takeField("\"dir\":", item->dir) &&
      takeField("\"exifDate\":", item->exifDate) &&
      takeField("\"exifOffset\":", item->exifOffset) &&
      takeField("\"itemDate\":", item->itemDate) &&  //
      line.take("\"kind\":") && line.take(item->kind) && line.take(",") &&
      takeField("\"lat\":", item->lat) && takeField("\"lon\":", item->lon) &&
      line.take("\"name\":") && line.take(item->name) && line.take(",") &&
      takeField("\"px\":", item->px) && takeField("\"py\":", item->py) && line.take("\"size\":") &&
      line.take(item->size) && line.take("}") && line.isAtEnd();
  if (!isPlain) item.reset();
  return item;
}

std::optional<SnapshotItem> jsonRecord(std::string_view line) {
  std::string list;
  list.reserve(line.size() + 2);
  list.append("[").append(line).append("]");
  TextReader reader{list};
  try {
    auto items = Snapshot::read(reader);
    if (items.size() == 1) return std::move(items.front());
  } catch (const SnapshotError&) {
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<SnapshotItem> recordOfLine(std::string_view line) {
  auto record = plainRecord(line);
  return record ? std::move(record) : jsonRecord(line);
}

}  // namespace tavrix
