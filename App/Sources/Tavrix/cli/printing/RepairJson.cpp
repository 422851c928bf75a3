// JsonPrinter: repairs of a destination.

#include "cli/printing/JsonPrinter.h"
#include "cli/printing/KeptReasonText.h"

namespace tavrix::cli {
namespace {

void writeReason(JsonWriter& json, const std::string& reason, const ReasonCode& code) {
  json.field("reason", reason).key("reasonCode");
  encode(code, json);
}

}  // namespace

void JsonPrinter::repaired(const RepairOutcome& outcome) {
  JsonWriter json{sink_};
  json.beginObject().key("repaired").beginArray();
  for (const RepairedFile& file : outcome.repaired) {
    json.beginObject().field("path", file.path).field("assetID", file.assetID);
    json.field("bytesOnDisk", file.bytesOnDisk).field("damagedPath", file.damagedPath).endObject();
  }
  json.endArray().key("failed").beginArray();
  for (const UnrepairedFile& file : outcome.failed) {
    json.beginObject().field("path", file.path).field("assetID", file.assetID);
    writeReason(json, file.failure.reason, file.failure.code);
    json.endObject();
  }
  json.endArray().key("kept").beginArray();
  for (const CopyRepair::KeptFile& file : outcome.kept) {
    json.beginObject().field("path", file.path).field("assetID", file.assetID);
    // Sentences in JSON do not depend on the language.
    writeReason(json, keptReasonText(Language::russian, file), file.code());
    json.endObject();
  }
  json.endArray().endObject().finish();
}

}  // namespace tavrix::cli
