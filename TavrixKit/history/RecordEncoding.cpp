#include "history/TransferRecordCoding.h"

namespace tavrix::TransferRecordCoding {
namespace {

using Record = TransferRecord;

std::optional<std::string> dateText(const std::optional<Instant>& date) {
  return date ? std::optional{iso8601(*date)} : std::nullopt;
}

void writePlace(const Record::Place& place, JsonWriter& json) {
  json.beginObject().field("countryCode", place.countryCode);
  json.field("latitude", place.latitude).field("longitude", place.longitude);
  json.key("names").beginObject();
  for (const auto& [language, name] : place.names) json.field(language, name);
  json.endObject().endObject();
}

void writeShot(const Record::Shot& shot, JsonWriter& json) {
  json.beginObject().field("captureDate", dateText(shot.captureDate)).key("files").beginArray();
  for (const Record::File& file : shot.files) encode(file, json);
  json.endArray().field("id", shot.id).field("kind", textOf(shot.kind));
  json.field("latitude", shot.latitude).field("longitude", shot.longitude);
  json.field("name", shot.name).field("outcome", textOf(shot.outcome)).endObject();
}

void writeFolder(const Record::Folder& folder, JsonWriter& json) {
  json.beginObject().field("name", folder.name);
  if (folder.place) {
    json.key("place");
    writePlace(*folder.place, json);
  }
  json.key("shots").beginArray();
  for (const Record::Shot& shot : folder.shots) writeShot(shot, json);
  json.endArray().endObject();
}

void writeOptions(const Record::Options& options, JsonWriter& json) {
  json.beginObject().field("container", options.container);
  json.field("editedPolicy", options.editedPolicy);
  json.field("eventGapHours", options.eventGapHours).field("eventGapKm", options.eventGapKm);
  json.field("fileNamePrefix", options.fileNamePrefix);
  json.field("flattenSingleKind", options.flattenSingleKind);
  json.field("granularity", options.granularity).field("homeName", options.homeName);
  json.field("includeAAE", options.includeAAE).field("includeLive", options.includeLive);
  json.field("includePhotos", options.includePhotos);
  json.field("includeVideos", options.includeVideos);
  json.field("jpegQuality", options.jpegQuality);
  json.field("liveOnlyPhoto", options.liveOnlyPhoto).field("mode", options.mode);
  json.field("onlyNew", options.onlyNew).field("photoFormat", options.photoFormat);
  json.field("separatePhotoVideo", options.separatePhotoVideo);
  json.field("skipOptimized", options.skipOptimized);
  json.field("templateName", options.templateName);
  json.field("tripCityKm", options.tripCityKm).field("tripDistanceKm", options.tripDistanceKm);
  json.field("videoFormat", options.videoFormat).endObject();
}

}  // namespace

void encode(const Record::File& file, JsonWriter& json) {
  json.beginObject().field("assetID", file.assetID).field("bytes", file.bytes);
  json.field("keptOriginal", file.keptOriginal).field("name", file.name);
  json.field("path", file.path).field("reason", file.reason);
  if (file.reasonCode) {
    json.key("reasonCode");
    encode(*file.reasonCode, json);
  }
  json.field("role", textOf(file.role)).field("savedName", file.savedName);
  json.field("state", textOf(file.state)).endObject();
}

void encode(const Record::Totals& totals, JsonWriter& json) {
  json.beginObject().field("alreadyThere", totals.alreadyThere);
  json.field("bytesWritten", totals.bytesWritten).field("failed", totals.failed);
  json.field("onMac", totals.onMac).field("optimized", totals.optimized);
  json.field("shots", totals.shots).endObject();
}

void encode(const TransferRecord& record, TextSink& sink) {
  JsonWriter json{sink};
  json.beginObject().field("destinationPath", record.destinationPath);
  json.field("finishedAt", iso8601(record.finishedAt)).key("folders").beginArray();
  for (const Record::Folder& folder : record.folders) writeFolder(folder, json);
  json.endArray().field("id", record.id.text()).key("notes").beginArray();
  for (const std::string& note : record.notes) json.value(note);
  json.endArray().key("options");
  writeOptions(record.options, json);
  json.field("phoneHash", record.phoneHash).field("phoneName", record.phoneName);
  json.field("schemaVersion", record.schemaVersion);
  json.field("startedAt", iso8601(record.startedAt)).field("status", textOf(record.status));
  json.key("totals");
  encode(record.totals, json);
  json.endObject().finish();
}

std::string encode(const TransferRecord& record) {
  StringSink sink;
  encode(record, sink);
  return sink.text();
}

}  // namespace tavrix::TransferRecordCoding
