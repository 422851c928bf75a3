// JsonPrinter: checks of a destination, and recognised copies.

#include "cli/printing/JsonPrinter.h"
#include "cli/printing/UnreadableReason.h"

namespace tavrix::cli {
namespace {

using CopyVerification::CheckedFile;
using MarkerRebuild::ExaminedFile;

/// Returns nullopt for an ordinary file.
std::optional<std::string> foundText(FileStatus::Type type) {
  switch (type) {
    case FileStatus::Type::file:
      return std::nullopt;
    case FileStatus::Type::folder:
      return "folder";
    case FileStatus::Type::link:
      return "link";
    case FileStatus::Type::other:
      return "other";
  }
  return std::nullopt;
}

/// Writes why something cannot be read; nothing if there was no error. The sentence is always in
/// Russian, so that the document does not depend on the language.
void writeReason(JsonWriter& json, int errorCode) {
  if (errorCode == 0) return;
  json.field("reason", unreadableReason(Language::russian, errorCode)).key("reasonCode");
  encode(ReasonCode{.code = "unreadable", .systemError = errorCode}, json);
}

void writeTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
  json.key(key).beginArray();
  for (const std::string& text : texts) json.value(text);
  json.endArray();
}

void writeFolders(JsonWriter& json, const std::vector<UnreadableFolder>& folders) {
  json.key("unreadableFolders").beginArray();
  for (const UnreadableFolder& folder : folders) {
    json.beginObject().field("path", folder.path);
    writeReason(json, folder.code);
    json.endObject();
  }
  json.endArray();
}

void writeCounts(JsonWriter& json, const CopyVerification::Report& report) {
  using CopyVerification::State;
  json.key("counts").beginObject().field("recorded", report.files.size());
  for (const State state :
       {State::intact, State::changed, State::missing, State::unreadable, State::withoutChecksum,
        State::neverConfirmed, State::notReached, State::beingWritten}) {
    json.field(textOf(state), report.count(state));
  }
  json.field("unknown", report.unknown.size()).field("leftOvers", report.leftOvers.size());
  json.field("ofRunningTransfer", report.ofRunningTransfer.size());
  json.field("damagedRecords", report.damagedRecords.size());
  json.field("unreadableFolders", report.unreadableFolders.size()).endObject();
}

void writeFile(JsonWriter& json, const CheckedFile& file) {
  json.beginObject().field("path", file.path).field("state", textOf(file.state));
  json.field("expectedSize", file.expectedSize).field("size", file.size);
  json.field("expectedSha256", file.expectedSha256).field("listedSha256", file.listedSha256);
  json.field("sha256", file.sha256);
  json.field("found", foundText(file.found));
  writeReason(json, file.errorCode);
  json.endObject();
}

void writeFile(JsonWriter& json, const ExaminedFile& file) {
  json.beginObject().field("path", file.path).field("state", textOf(file.state));
  json.field("size", file.size).field("sha256", file.sha256);
  if (file.asset) json.field("assetID", file.asset->id());
  writeReason(json, file.errorCode);
  json.endObject();
}

}  // namespace

void JsonPrinter::verification(const VerificationResult& result) {
  const CopyVerification::Report& report = result.report;
  JsonWriter json{sink_};
  json.beginObject().field("status", report.isStopped ? "cancelled" : "completed");
  json.field("isTransferRunning", report.isTransferRunning);
  writeCounts(json, report);
  json.field("bytesRead", report.bytesRead).key("files").beginArray();
  for (const CheckedFile& file : report.files) writeFile(json, file);
  json.endArray().key("unknown").beginArray();
  for (const auto& file : report.unknown) {
    json.beginObject().field("path", file.path).field("size", file.size).endObject();
  }
  json.endArray();
  writeTexts(json, "leftOvers", report.leftOvers);
  writeTexts(json, "ofRunningTransfer", report.ofRunningTransfer);
  writeTexts(json, "damagedRecords", report.damagedRecords);
  writeFolders(json, report.unreadableFolders);
  if (result.checksums) {
    json.key("checksums").beginObject().field("path", result.checksums->path);
    json.field("files", result.checksums->files);
    json.field("withoutRecord", result.checksums->withoutRecord).endObject();
  }
  json.endObject().finish();
}

void JsonPrinter::rebuilt(const RebuildResult& result) {
  using MarkerRebuild::State;
  const MarkerRebuild::Report& report = result.report;
  JsonWriter json{sink_};
  json.beginObject().field("status", report.isStopped ? "cancelled" : "completed");
  json.field("phone", result.phone).key("counts").beginObject();
  json.field("files", report.files.size());
  for (const State state : {State::alreadyRecorded, State::recognised, State::otherPhone,
                            State::unmatched, State::unreadable, State::notReached}) {
    json.field(textOf(state), report.count(state));
  }
  json.endObject().field("bytesRead", report.bytesRead).key("files").beginArray();
  for (const ExaminedFile& file : report.files) writeFile(json, file);
  json.endArray().key("unreadableAssets").beginArray();
  for (const MediaAsset& asset : report.unreadableAssets) json.value(asset.id());
  json.endArray();
  writeFolders(json, report.unreadableFolders);
  json.endObject().finish();
}

}  // namespace tavrix::cli
