#include "history/HistoryIndex.h"

#include <array>

#include "history/RecordFields.h"
#include "history/TransferRecordCoding.h"

namespace tavrix {
namespace {

using State = HistoryIndexEntry::State;
constexpr std::array<std::string_view, 3> stateNames{"readable", "newerSchema", "unreadable"};

void writeRun(const RecordSummary& run, JsonWriter& json) {
  json.beginObject().field("destinationPath", run.destinationPath);
  json.field("finishedAt", iso8601(run.finishedAt)).field("id", run.id.text());
  json.field("phoneHash", run.phoneHash).field("phoneName", run.phoneName);
  json.field("startedAt", iso8601(run.startedAt)).field("status", textOf(run.status));
  json.key("totals");
  TransferRecordCoding::encode(run.totals, json);
  json.endObject();
}

RecordSummary runFrom(const RecordFields& fields) {
  RecordSummary run;
  run.id = fields.required("id", Uuid::parse(fields.text("id")));
  run.startedAt = fields.date("startedAt");
  run.finishedAt = fields.date("finishedAt");
  run.status = fields.caseAt<TransferRecord::Status>("status");
  run.phoneName = fields.text("phoneName");
  run.phoneHash = fields.optionalText("phoneHash");
  run.destinationPath = fields.text("destinationPath");
  run.totals = TransferRecordCoding::totalsFrom(fields.object("totals"));
  return run;
}

std::optional<State> stateOf(std::string_view name) {
  for (std::size_t i = 0; i < stateNames.size(); ++i) {
    if (stateNames.at(i) == name) return static_cast<State>(i);
  }
  return std::nullopt;
}

HistoryIndexEntry entryFrom(const RecordFields& fields) {
  HistoryIndexEntry entry;
  entry.fileName = fields.text("fileName");
  entry.size = fields.count("size");
  entry.modified = fields.date("modified");
  entry.state = fields.required("state", stateOf(fields.text("state")));
  if (entry.state == State::readable) entry.run = runFrom(fields.object("run"));
  return entry;
}

}  // namespace

void HistoryIndex::encode(const std::vector<HistoryIndexEntry>& entries, TextSink& sink) {
  JsonWriter json{sink};
  json.beginArray();
  for (const HistoryIndexEntry& entry : entries) {
    json.beginObject().field("fileName", entry.fileName);
    json.field("modified", iso8601(entry.modified));
    if (entry.run) {
      json.key("run");
      writeRun(*entry.run, json);
    }
    json.field("size", entry.size);
    json.field("state", stateNames.at(static_cast<std::size_t>(entry.state))).endObject();
  }
  json.endArray().finish();
}

std::vector<HistoryIndexEntry> HistoryIndex::decode(ByteReader& source) {
  std::vector<HistoryIndexEntry> entries;
  try {
    readJsonElements(source, [&](JsonValue element) {
      try {
        entries.push_back(entryFrom({element, ""}));
      } catch (const TransferRecord::RecordError&) {
        // The record itself is read instead.
      }
    });
  } catch (const JsonError&) {
    // The entries before the damage are still valid.
  }
  return entries;
}

}  // namespace tavrix
