#include "model/GroupsDebug.h"

#include <cerrno>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/json/JsonWriter.h"
#include "settings/StateFolder.h"

namespace tavrix {
namespace {

constexpr const char* fileName = "groups-debug.json";

void writeTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts) {
  json.key(key).beginArray();
  for (const std::string& text : texts) json.value(text);
  json.endArray();
}

void writeGroup(JsonWriter& json, const DisplayGroup& group, bool isIncluded) {
  std::vector<std::string> children;
  for (const MediaGroup& child : group.group->children) children.push_back(child.id);
  std::vector<std::string> members;
  for (const AssetBundle& bundle : group.group->bundles) {
    for (const MediaAsset& asset : bundle.assets()) members.emplace_back(asset.id());
  }
  json.beginObject();
  writeTexts(json, "children", children);
  json.field("folderName", group.folderName)
      .field("id", group.id)
      .field("isIncluded", isIncluded)
      .field("knownCount", group.knownCount);
  writeTexts(json, "members", members);
  json.field("newCount", group.newCount).endObject();
}

void logFailure(Log& log, const FileError& error) {
  writeLog(log, "groups debug: code={}, path={}", error.code(), PrivateField{error.path()});
}

}  // namespace

std::string GroupsDebug::encode(const DisplayGroups& groups, const CheckMarks& checks,
                                const Settings& settings) {
  StringSink sink;
  JsonWriter json{sink};
  json.beginObject();
  json.key("groups").beginArray();
  for (const auto& group : *groups) writeGroup(json, *group, checks.isIncluded(group->key));
  json.endArray();
  json.key("merges").beginArray();
  for (const auto& ids : ofCurrentMode(settings, &Settings::Gathering::mergesByMode)) {
    json.beginObject();
    writeTexts(json, "groups", ids);
    json.endObject();
  }
  json.endArray().endObject();
  json.finish();
  return sink.text();
}

void GroupsDebug::write(const std::string& stateFolder, const DisplayGroups& groups,
                        const CheckMarks& checks, const Settings& settings, Log& log) {
  try {
    writeFileAtomically(*openStateFolder(stateFolder, ""), fileName,
                        encode(groups, checks, settings));
  } catch (const FileError& error) {
    logFailure(log, error);
  }
}

void GroupsDebug::remove(const std::string& stateFolder, Log& log) {
  try {
    openFolder(stateFolder)->removeFile(fileName);
  } catch (const FileError& error) {
    if (error.code() != ENOENT) logFailure(log, error);
  }
}

}  // namespace tavrix
