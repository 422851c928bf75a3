#include "cli/printing/JsonPrinter.h"

#include "cli/printing/ReasonsJson.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix::cli {
namespace {

void writePoint(JsonWriter& json, std::string_view key, const std::optional<GeoPoint>& point) {
  if (!point) return;
  json.key(key).beginObject();
  json.field("latitude", point->latitude).field("longitude", point->longitude).endObject();
}

void writeInstant(JsonWriter& json, std::string_view key, const std::optional<Instant>& instant) {
  if (instant) json.field(key, iso8601(*instant));
}

void writeAsset(JsonWriter& json, const MediaAsset& asset) {
  json.beginObject();
  json.field("id", asset.id()).field("name", asset.name()).field("directory", asset.directory());
  json.field("kind", textOf(asset.kind())).field("sizeBytes", asset.sizeBytes());
  writeInstant(json, "captureDate", asset.captureDate());
  if (const auto source = asset.dateSource()) json.field("dateSource", textOf(*source));
  writePoint(json, "location", asset.location());
  json.field("isOptimized", asset.isOptimized());
  json.field("isEditedVariant", asset.isEditedVariant()).endObject();
}

void writeAssetIDs(JsonWriter& json, const std::vector<MediaAsset>& assets) {
  for (const MediaAsset& asset : assets) json.value(asset.id());
}

void writeBundle(JsonWriter& json, const AssetBundle& bundle) {
  json.beginObject().field("id", bundle.id()).field("original", bundle.original().id());
  json.key("assets").beginArray();
  writeAssetIDs(json, bundle.assets());
  json.endArray();
  json.field("hasEditedVersion", bundle.hasEditedVersion());
  json.field("isLivePhoto", bundle.isLivePhoto());
  json.field("pictures", bundle.pictureCount()).endObject();
}

void writeBundleIDs(JsonWriter& json, const std::vector<AssetBundle>& bundles) {
  json.key("bundles").beginArray();
  for (const AssetBundle& bundle : bundles) json.value(bundle.id());
  json.endArray();
}

void writeCounts(JsonWriter& json, const MediaGroup::MediaCounts& counts) {
  json.key("counts").beginObject();
  json.field("photos", counts.photos).field("videos", counts.videos);
  json.field("sidecars", counts.sidecars).field("others", counts.others);
  json.field("totalBytes", counts.totalBytes).endObject();
}

void writeGroup(JsonWriter& json, const FolderNaming::Row& row, bool isFlat) {
  const MediaGroup& group = *row.group;
  json.beginObject().field("id", group.id).field("folderName", isFlat ? "" : row.name);
  writeInstant(json, "dateStart", group.dateStart);
  writeInstant(json, "dateEnd", group.dateEnd);
  if (group.cameraDays) {
    json.field("firstDay", dayText(group.cameraDays->first));
    json.field("lastDay", dayText(group.cameraDays->last));
  }
  writePoint(json, "place", group.place);
  writeCounts(json, group.counts());
  writeBundleIDs(json, group.bundles);
  json.key("assets").beginArray();
  for (const AssetBundle& bundle : group.bundles) writeAssetIDs(json, bundle.assets());
  json.endArray().key("children").beginArray();
  for (const MediaGroup& child : group.children) json.value(child.id);
  json.endArray().endObject();
}

void writeHomeCandidate(JsonWriter& json, const HomeCandidate& candidate) {
  json.beginObject();
  writePoint(json, "center", candidate.center);
  json.field("recentDays", candidate.recentDays).field("totalDays", candidate.totalDays);
  json.field("pointCount", candidate.pointCount);
  writeInstant(json, "firstDate", candidate.firstDate);
  writeInstant(json, "lastDate", candidate.lastDate);
  json.endObject();
}

void writeHomePeriods(JsonWriter& json, const Library& library) {
  if (!library.home || library.home->periods.empty()) return;
  json.key("homePeriods").beginArray();
  for (const HomePeriod& period : library.home->periods) {
    json.beginObject();
    writePoint(json, "center", period.home.center);
    json.field("firstDay", dayText(period.firstDay)).field("lastDay", dayText(period.lastDay));
    json.field("totalDays", period.home.totalDays).endObject();
  }
  json.endArray();
}

void writePlaceNames(JsonWriter& json, const std::map<std::string, PlaceNames>& names) {
  if (names.empty()) return;
  json.key("names").beginObject();
  for (const auto& [language, each] : names) {
    json.key(language).beginObject().field("city", each.city);
    json.field("countryCode", each.countryCode).field("countryName", each.countryName);
    json.field("region", each.region).endObject();
  }
  json.endObject();
}

void writePlannedFile(JsonWriter& json, const PlannedFile& file) {
  json.beginObject().field("assetID", file.asset.id()).field("relativePath", file.relativePath);
  json.field("conversion", textOf(file.conversion)).field("isPicture", file.isPicture);
  json.field("bundleID", file.bundleID()).field("sizeBytes", file.asset.sizeBytes()).endObject();
}

void writeTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
  json.key(key).beginArray();
  for (const std::string& text : texts) json.value(text);
  json.endArray();
}

void writeOutcome(JsonWriter& json, const FileOutcome& outcome) {
  json.beginObject().field("assetID", outcome.assetID).field("name", outcome.name);
  json.field("path", outcome.path).field("bytesOnDisk", outcome.bytesOnDisk);
  json.field("kind", textOf(outcome.kind));
  if (outcome.hasSafeName) json.field("hasSafeName", true);
  if (outcome.isMisnamed) json.field("isMisnamed", true);
  if (const auto* const failed = std::get_if<FileOutcome::Failed>(&outcome.kind)) {
    json.field("reason", failed->reason).key("reasonCode");
    encode(failed->code, json);
  }
  if (const auto* const kept = std::get_if<FileOutcome::KeptOriginal>(&outcome.kind)) {
    json.field("reason", textOf(kept->reason)).key("reasonCode");
    encode(ReasonCode{.code = std::string{textOf(kept->reason)}}, json);
  }
  json.endObject();
}

void writeReport(JsonWriter& json, const TransferReport& report) {
  json.beginObject();
  json.field("copied", report.copied).field("copiedPictures", report.copiedPictures);
  json.field("resumedSkips", report.resumedSkips).field("bytesCopied", report.bytesCopied);
  json.field("bytesWritten", report.bytesWritten);
  writeTexts(json, "conversionFallbacks", report.conversionFallbacks);
  writeTexts(json, "failures", report.failures);
  json.field("convertedSizeMismatches", report.convertedSizeMismatches);
  json.key("files").beginArray();
  for (const FileOutcome& outcome : report.files) writeOutcome(json, outcome);
  json.endArray().endObject();
}

void writeRun(JsonWriter& json, const RecordSummary& run) {
  json.field("id", run.id.text()).field("startedAt", iso8601(run.startedAt));
  json.field("finishedAt", iso8601(run.finishedAt)).field("status", textOf(run.status));
  json.field("phoneName", run.phoneName).field("destinationPath", run.destinationPath);
  json.key("totals");
  TransferRecordCoding::encode(run.totals, json);
}

/// Writes the archives of a run that packs its files; otherwise nothing.
void writeArchives(JsonWriter& json, const PlanResult& result) {
  if (result.archives.empty()) return;
  json.key("archives").beginArray();
  for (const PlannedArchive& archive : result.archives) {
    json.beginObject().field("name", archive.name).field("files", archive.files.size());
    json.endObject();
  }
  json.endArray();
}

}  // namespace

void JsonPrinter::catalog(const std::vector<MediaAsset>& assets) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const MediaAsset& asset : assets) writeAsset(json, asset);
  json.endArray().finish();
}

void JsonPrinter::bundles(const std::vector<AssetBundle>& bundles) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const AssetBundle& bundle : bundles) writeBundle(json, bundle);
  json.endArray().finish();
}

namespace {

void writeSuggestions(JsonWriter& json, const std::vector<MergeSuggestion>& suggestions) {
  if (suggestions.empty()) return;
  json.key("suggestions").beginArray();
  for (const MergeSuggestion& suggestion : suggestions) {
    json.beginObject().key("groupIDs").beginArray();
    for (const std::string& id : suggestion.groupIDs) json.value(id);
    json.endArray().field("trips", suggestion.trips).field("outings", suggestion.outings);
    json.endObject();
  }
  json.endArray();
}

}  // namespace

void JsonPrinter::groups(const GroupsResult& result) {
  const Library& library = result.library;
  JsonWriter json{sink_};
  json.beginObject().key("groups").beginArray();
  for (const FolderNaming::Row& row : library.rows) writeGroup(json, row, result.isFlat);
  json.endArray().key("homeCandidates").beginArray();
  for (const HomeCandidate& candidate : library.homeCandidates) {
    writeHomeCandidate(json, candidate);
  }
  json.endArray().field("homeIsAmbiguous", library.homeIsAmbiguous);
  writeHomePeriods(json, library);
  json.field("filteredBundles", library.filteredBundles->size());
  json.field("optimizedCount", library.optimizedCount);
  json.field("leftOutByChoice", library.leftOut.byChoice);
  writeSuggestions(json, library.suggestions);
  writeReasons(json, library);
  json.endObject().finish();
}

void JsonPrinter::places(const PlacesResult& result) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const LibraryPlace& place : result.places) {
    json.beginObject();
    writePoint(json, "center", place.center);
    json.field("count", place.bundles.size());
    writeBundleIDs(json, place.bundles);
    writePlaceNames(json, place.names);
    json.endObject();
  }
  json.endArray().finish();
}

namespace {

/// Writes the folders that groups continue under names that the template would not give.
void writeContinued(JsonWriter& json, const std::vector<FolderNaming::Row>& rows) {
  json.key("continues").beginArray();
  for (const FolderNaming::Row& row : rows) {
    if (!row.templateName) continue;
    json.beginObject()
        .field("folder", row.name)
        .field("templateName", *row.templateName)
        .endObject();
  }
  json.endArray();
}

/// Writes the files of the destination that do not have the expected size.
void writeDiffering(JsonWriter& json, const std::vector<DifferingFile>& files) {
  json.key("differing").beginArray();
  for (const DifferingFile& file : files) {
    json.beginObject()
        .field("assetID", file.assetID)
        .field("path", file.path)
        .field("state", textOf(file.kind))
        .field("size", file.size)
        .field("expectedSize", file.expectedSize)
        .endObject();
  }
  json.endArray();
}

}  // namespace

void JsonPrinter::plan(const PlanResult& result) {
  JsonWriter json{sink_};
  json.beginObject().key("files").beginArray();
  for (const PlannedFile& file : result.plan.files) writePlannedFile(json, file);
  json.endArray().key("skippedKnown").beginArray();
  writeAssetIDs(json, result.plan.skippedKnown);
  json.endArray().field("onlyNew", result.plan.onlyNew);
  writeDiffering(json, result.plan.differing);
  writeContinued(json, result.library.rows);
  writeArchives(json, result);
  json.field("leftOutByChoice", result.library.leftOut.byChoice);
  json.endObject().finish();
}

void JsonPrinter::transfer(const TransferResult& result) {
  JsonWriter json{sink_};
  json.beginObject().field("status", textOf(result.outcome.status)).key("report");
  writeReport(json, *result.outcome.report);
  writeDiffering(json, result.plan.differing);
  writeContinued(json, result.library.rows);
  json.field("leftOutByChoice", result.library.leftOut.byChoice);
  if (result.recordID) json.field("recordID", result.recordID->text());
  json.endObject().finish();
}

void JsonPrinter::runs(const std::vector<RecordSummary>& runs, bool) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const RecordSummary& run : runs) {
    json.beginObject();
    writeRun(json, run);
    json.endObject();
  }
  json.endArray().finish();
}

void JsonPrinter::fileRuns(const std::vector<HistoryStore::FileRun>& runs) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const auto& [run, file] : runs) {
    json.beginObject();
    writeRun(json, run);
    json.key("file");
    TransferRecordCoding::encode(file, json);
    json.endObject();
  }
  json.endArray().finish();
}

void JsonPrinter::record(const TransferRecord& record) {
  TransferRecordCoding::encode(record, sink_);
}

void JsonPrinter::recordDeleted(const Uuid& id) {
  JsonWriter json{sink_};
  json.beginObject().field("deleted", id.text()).endObject().finish();
}

// The cache of place names is one file, and a failure to remove it ends the command.
void JsonPrinter::placeNamesReset(bool hadAny) {
  JsonWriter json{sink_};
  json.beginObject().field("failed", std::uint64_t{0});
  json.field("removed", std::uint64_t{hadAny ? 1U : 0U}).endObject().finish();
}

void JsonPrinter::thumbnailsWritten(std::uint64_t written, std::uint64_t failed) {
  JsonWriter json{sink_};
  json.beginObject().field("failed", failed).field("written", written).endObject().finish();
}

void JsonPrinter::windowStarts(const std::string& program,
                               const std::vector<std::string>& arguments) {
  JsonWriter json{sink_};
  json.beginObject().field("program", program).key("arguments").beginArray();
  for (const std::string& argument : arguments) json.value(argument);
  json.endArray().endObject().finish();
}

void JsonPrinter::snapshotWritten(const std::string& path, std::uint64_t items) {
  JsonWriter json{sink_};
  json.beginObject().field("path", path).field("items", items).endObject().finish();
}

void JsonPrinter::name(const std::string& name) {
  JsonWriter json{sink_};
  json.beginObject().field("name", name).endObject().finish();
}

void JsonPrinter::presets(const std::vector<NamePresets::Builtin>& presets, const std::string&) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const NamePresets::Builtin& preset : presets) {
    json.beginObject().field("russian", preset.russian).field("english", preset.english);
    json.key("template");
    NameTemplateCoding::encode(preset.nameTemplate, json);
    json.endObject();
  }
  json.endArray().finish();
}

}  // namespace tavrix::cli
