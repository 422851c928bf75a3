#include <algorithm>

#include "foundation/json/JsonReader.h"
#include "foundation/json/JsonWriter.h"
#include "foundation/json/PlainJson.h"
#include "transfer/DestinationMarker.h"

namespace tavrix::DestinationMarker {
namespace {

/// The picture's own date takes precedence over its file's.
void setDate(FileRecord& file, const std::optional<Instant>& at, bool isOwn,
             bool isOfEarlierForm = false) {
  if (at && (isOwn || !file.date)) file.date = ShotDate{*at, isOwn, isOfEarlierForm};
}

constexpr std::string_view encodedBegin = "{\n  \"files\": [";

void setCaptured(FileRecord& file, std::string_view value) {
  const bool isOfEarlierForm = value.ends_with('Z');
  const std::string text = std::string{value} + (isOfEarlierForm ? "" : "Z");
  setDate(file, parseIso8601(text), true, isOfEarlierForm);
}

void setModified(FileRecord& file, std::string_view value) {
  setDate(file, parseIso8601(value), false);
}

/// Gives each folder the making of its number. A folder with a number that is none has no note.
void assignMakings(std::vector<FolderNote>& folders, const std::vector<std::uint64_t>& numbers,
                   std::vector<FolderMaking> makings) {
  const std::vector<Shared<FolderMaking>> shared{std::make_move_iterator(makings.begin()),
                                                 std::make_move_iterator(makings.end())};
  std::vector<FolderNote> noted;
  for (std::size_t i = 0; i < folders.size(); ++i) {
    if (numbers[i] < shared.size()) {
      noted.push_back({std::move(folders[i].name), shared[numbers[i]]});
    }
  }
  folders = std::move(noted);
}

/// Reads a record in the exact form that encode() writes, which takes a fraction of the time.
/// Returns nullopt for any other text.
class PlainRecord {
 public:
  explicit PlainRecord(std::string_view json) : json_(json) {}

  std::optional<PhoneRecord> take() {
    std::optional<PhoneRecord> record{std::in_place};
    std::vector<std::uint64_t> makingOfFolder;
    const bool isPlain =
        json_.take(encodedBegin) && takeFiles(record->files) &&
        json_.take("\n  ],\n  \"firstTransfer\": ") && takeDate(record->firstTransfer) &&
        takeFolders(record->folders, makingOfFolder) && json_.take(",\n  \"label\": ") &&
        json_.take(record->label) && json_.take(",\n  \"lastTransfer\": ") &&
        takeDate(record->lastTransfer) && takeMakings(record->folders, makingOfFolder) &&
        json_.take(",\n  \"model\": ") && json_.take(record->model) &&
        json_.take(",\n  \"phoneHash\": ") && json_.take(record->phoneHash) &&
        json_.take(",\n  \"schemaVersion\": ") && json_.take(record->schemaVersion) &&
        json_.take("\n}\n") && json_.isAtEnd() && record->schemaVersion <= schemaVersion;
    if (!isPlain) record.reset();
    return record;
  }

 private:
  /// The fewest bytes of a file with a digest.
  static constexpr std::size_t bytesOfAFile = 200;

  bool takeFiles(std::vector<FileRecord>& files) {
    files.reserve(json_.size() / bytesOfAFile);
    do {
      if (!takeFile(files.emplace_back())) return false;
    } while (json_.take(","));
    return true;
  }
  bool takeFile(FileRecord& file) {
    std::optional<std::string> captured;
    std::optional<std::string> modified;
    const bool isPlain = json_.take("\n    {") && takeOptional("captured", captured) &&
                         takeOptional("cloudID", file.cloudID) && takeSafeName(file) &&
                         takeOptional("keptInsteadOf", file.keptInsteadOf) &&
                         takeOptional("localID", file.localID) &&
                         takeOptional("modified", modified) && takeKey("path") &&
                         json_.take(file.path) && json_.take(",") &&
                         takeOptional("sha256", file.sha256) && takeKey("size") &&
                         json_.take(file.size) && json_.take("\n    }");
    if (captured) setCaptured(file, *captured);
    if (modified) setModified(file, *modified);
    return isPlain;
  }
  /// Takes the folders with the numbers of their makings, if any are listed.
  bool takeFolders(std::vector<FolderNote>& folders, std::vector<std::uint64_t>& makings) {
    if (!json_.take(",\n  \"folders\": [")) return true;
    do {
      const bool isPlain = json_.take("\n    {") && takeKey("making") &&
                           json_.take(makings.emplace_back()) && json_.take(",") &&
                           takeKey("name") && json_.take(folders.emplace_back().name) &&
                           !folders.back().name.empty() && json_.take("\n    }");
      if (!isPlain) return false;
    } while (json_.take(","));
    return json_.take("\n  ]");
  }
  bool takeMakings(std::vector<FolderNote>& folders, const std::vector<std::uint64_t>& numbers) {
    std::vector<FolderMaking> makings;
    if (json_.take(",\n  \"makings\": [")) {
      do {
        if (!takeMaking(makings.emplace_back())) return false;
      } while (json_.take(","));
      if (!json_.take("\n  ]")) return false;
    }
    assignMakings(folders, numbers, std::move(makings));
    return true;
  }
  bool takeMaking(FolderMaking& making) {
    if (!json_.take("\n    {")) return false;
    do {
      std::string key;
      const bool isPlain =
          json_.take("\n      ") && json_.take(key) && json_.take(": ") && json_.take(making[key]);
      if (!isPlain) return false;
    } while (json_.take(","));
    return json_.take("\n    }");
  }
  /// Returns true also if the field is absent.
  bool takeSafeName(FileRecord& file) {
    file.hasSafeName = json_.take("\n      \"hasSafeName\": true,");
    return true;
  }
  bool takeKey(std::string_view name) {
    return json_.take("\n      \"") && json_.take(name) && json_.take("\": ");
  }
  /// Returns true also if the field is absent.
  bool takeOptional(std::string_view name, std::optional<std::string>& value) {
    const PlainJson before = json_;
    if (takeKey(name)) return json_.take(value.emplace()) && json_.take(",");
    json_ = before;
    return true;
  }
  bool takeDate(Instant& date) {
    std::string text;
    const auto read = json_.take(text) ? parseIso8601(text) : std::nullopt;
    if (read) date = *read;
    return read.has_value();
  }

  PlainJson json_;
};

/// Builds a record from JSON events. Skips unknown keys with their values.
class RecordBuilder : public JsonHandler {
 public:
  /// Without `readsNotes`, the notes of folders are skipped, whatever they are.
  explicit RecordBuilder(bool readsNotes) : readsNotes_(readsNotes) {}

  /// Returns nullopt if a required field was missing.
  std::optional<PhoneRecord> take() {
    const bool isWhole =
        hasVersion_ && hasHash_ && hasLabel_ && hasModel_ && hasFirst_ && hasLast_ && hasFiles_;
    if (!isWhole) return std::nullopt;
    assignMakings(record_.folders, makingOfFolder_, std::move(makings_));
    return std::move(record_);
  }
  bool hasVersion() const { return hasVersion_; }
  std::int64_t version() const { return record_.schemaVersion; }

  bool null() override { return isUnknown() || (depth_ == 3 && isOptionalFileField()); }
  bool boolean(bool value) override {
    if (isUnknown()) return true;
    file_.hasSafeName = value;
    return depth_ == 3 && list_ == List::files && key_ == "hasSafeName";
  }
  bool number(double) override { return isUnknown(); }
  bool integer(std::int64_t value) override {
    if (isUnknown()) return true;
    return depth_ == 1 && key_ == "schemaVersion" && setVersion(value);
  }
  bool unsignedInteger(std::uint64_t value) override {
    if (isUnknown()) return true;
    if (depth_ == 1 && key_ == "schemaVersion")
      return value <= INT64_MAX && setVersion(static_cast<std::int64_t>(value));
    if (depth_ != 3) return false;
    if (list_ == List::folders && key_ == "making") {
      makingOfFolder_.back() = value;
      return true;
    }
    if (list_ != List::files || key_ != "size") return false;
    file_.size = value;
    return hasSize_ = true;
  }
  bool string(std::string_view value) override {
    if (isUnknown()) return true;
    if (depth_ == 1) return setText(value);
    if (depth_ != 3) return false;
    if (list_ == List::makings) {
      makings_.back()[key_] = value;
      return true;
    }
    return list_ == List::folders ? setFolderText(value) : setFileText(value);
  }
  bool key(std::string_view name) override {
    if (unknownDepth_ == 0) {
      key_ = name;
      isUnknownKey_ = !(depth_ == 1 ? isRecordKey(name) : isKeyOfList(name));
    }
    return true;
  }
  bool startObject() override {
    if (enterUnknown()) return true;
    ++depth_;
    if (depth_ == 3) beginElement();
    return depth_ == 1 || depth_ == 3;
  }
  bool endObject() override {
    if (leaveUnknown()) return true;
    if (depth_-- != 3) return true;
    if (list_ == List::folders) return !record_.folders.back().name.empty();
    if (list_ == List::makings) return true;
    if (!hasPath_ || !hasSize_) return false;
    record_.files.push_back(std::move(file_));
    return true;
  }
  bool startArray() override {
    if (enterUnknown()) return true;
    if (depth_ != 1) return false;
    depth_ = 2;
    if (key_ == "folders") return beginFolders();
    if (key_ == "makings") return beginMakings();
    list_ = List::files;
    record_.files.clear();
    return key_ == "files" && (hasFiles_ = true);
  }
  bool endArray() override {
    if (leaveUnknown()) return true;
    depth_ = 1;
    return true;
  }

 private:
  /// The list of the record that is being read.
  enum class List { files, folders, makings };

  bool isRecordKey(std::string_view name) const {
    return name == "schemaVersion" || name == "phoneHash" || name == "label" || name == "model" ||
           name == "firstTransfer" || name == "lastTransfer" || name == "files" ||
           (readsNotes_ && (name == "folders" || name == "makings"));
  }
  bool isKeyOfList(std::string_view name) const {
    if (list_ == List::folders) return name == "making" || name == "name";
    return list_ == List::makings || isFileKey(name);
  }
  static bool isFileKey(std::string_view name) {
    return name == "path" || name == "size" || name == "sha256" || name == "localID" ||
           name == "cloudID" || name == "keptInsteadOf" || name == "hasSafeName" ||
           name == "captured" || name == "modified";
  }
  bool isOptionalFileField() const {
    return list_ == List::files && key_ != "path" && key_ != "size";
  }
  bool beginFolders() {
    list_ = List::folders;
    record_.folders.clear();
    makingOfFolder_.clear();
    return true;
  }
  bool beginMakings() {
    list_ = List::makings;
    makings_.clear();
    return true;
  }
  void beginElement() {
    file_ = {};
    hasPath_ = hasSize_ = false;
    if (list_ == List::folders) {
      record_.folders.emplace_back();
      makingOfFolder_.push_back(noMaking);
    }
    if (list_ == List::makings) makings_.emplace_back();
  }
  bool setFolderText(std::string_view value) {
    record_.folders.back().name = value;
    return key_ == "name";
  }
  /// Returns true if the current value belongs to an unknown key.
  bool isUnknown() const {
    return unknownDepth_ > 0 || ((depth_ == 1 || depth_ == 3) && isUnknownKey_);
  }
  bool enterUnknown() {
    if (!isUnknown()) return false;
    ++unknownDepth_;
    return true;
  }
  bool leaveUnknown() {
    if (unknownDepth_ == 0) return false;
    --unknownDepth_;
    return true;
  }
  bool setVersion(std::int64_t value) {
    record_.schemaVersion = value;
    return hasVersion_ = true;
  }
  bool setText(std::string_view value) {
    if (key_ == "phoneHash") return set(record_.phoneHash, value, hasHash_);
    if (key_ == "label") return set(record_.label, value, hasLabel_);
    if (key_ == "model") return set(record_.model, value, hasModel_);
    if (key_ == "firstTransfer") return setInstant(record_.firstTransfer, value, hasFirst_);
    return key_ == "lastTransfer" && setInstant(record_.lastTransfer, value, hasLast_);
  }
  bool setFileText(std::string_view value) {
    if (key_ == "path") return set(file_.path, value, hasPath_);
    if (key_ == "sha256") file_.sha256 = value;
    if (key_ == "localID") file_.localID = value;
    if (key_ == "cloudID") file_.cloudID = value;
    if (key_ == "keptInsteadOf") file_.keptInsteadOf = value;
    if (key_ == "captured") setCaptured(file_, value);
    if (key_ == "modified") setModified(file_, value);
    return key_ != "size" && key_ != "hasSafeName";
  }
  static bool set(std::string& field, std::string_view value, bool& has) {
    field = value;
    return has = true;
  }
  static bool setInstant(Instant& field, std::string_view value, bool& has) {
    const auto date = parseIso8601(value);
    if (!date) return false;
    field = *date;
    return has = true;
  }

  static constexpr std::uint64_t noMaking = UINT64_MAX;

  bool readsNotes_;
  PhoneRecord record_;
  FileRecord file_;
  std::vector<std::uint64_t> makingOfFolder_;
  std::vector<FolderMaking> makings_;
  List list_ = List::files;
  std::string key_;
  int depth_ = 0;  ///< 1 in the record, 2 in one of its lists, 3 in an element of the list
  int unknownDepth_ = 0;
  bool isUnknownKey_ = false;
  bool hasVersion_ = false;
  bool hasHash_ = false;
  bool hasLabel_ = false;
  bool hasModel_ = false;
  bool hasFirst_ = false;
  bool hasLast_ = false;
  bool hasFiles_ = false;
  bool hasPath_ = false;
  bool hasSize_ = false;
};

/// Returns the date as text if it is of the given kind. The date of a camera's clock has no zone,
/// because the clock does not know it.
std::optional<std::string> dateText(const std::optional<ShotDate>& date, bool isOwn) {
  if (!date || date->isOwn != isOwn) return std::nullopt;
  std::string text = iso8601(date->at);
  if (isOwn && !date->isOfEarlierForm) text.pop_back();
  return text;
}

/// The distinct makings of the folders, in the order of their first folder, and the number of each
/// folder's making among them.
struct NumberedMakings {
  std::vector<Shared<FolderMaking>> makings;
  std::vector<std::uint64_t> ofFolder;
};

NumberedMakings numbered(const std::vector<FolderNote>& folders) {
  NumberedMakings result;
  for (const FolderNote& folder : folders) {
    auto& makings = result.makings;
    const auto found = std::find(makings.begin(), makings.end(), folder.making);
    result.ofFolder.push_back(static_cast<std::uint64_t>(found - makings.begin()));
    if (found == makings.end()) makings.push_back(folder.making);
  }
  return result;
}

void encodeFolders(JsonWriter& json, const std::vector<FolderNote>& folders,
                   const NumberedMakings& numbers) {
  if (folders.empty()) return;
  json.key("folders").beginArray();
  for (std::size_t i = 0; i < folders.size(); ++i) {
    json.beginObject()
        .field("making", numbers.ofFolder[i])
        .field("name", folders[i].name)
        .endObject();
  }
  json.endArray();
}

void encodeMakings(JsonWriter& json, const NumberedMakings& numbers) {
  if (numbers.makings.empty()) return;
  json.key("makings").beginArray();
  for (const auto& making : numbers.makings) {
    json.beginObject();
    for (const auto& [key, value] : *making) json.field(key, value);
    json.endObject();
  }
  json.endArray();
}

/// Returns nullopt if the text is not a record. Throws as decode(). `Text` is what readJson()
/// takes.
template <typename Text>
std::optional<PhoneRecord> read(Text&& text, bool readsNotes) {
  RecordBuilder builder{readsNotes};
  bool isRead = true;
  try {
    readJson(text, builder);
  } catch (const JsonError&) {
    isRead = false;
  }
  // A newer version may have other fields; its number alone shows that the record must not be
  // changed.
  if (builder.hasVersion() && builder.version() > schemaVersion)
    throw MarkerError{"", builder.version()};
  return isRead ? builder.take() : std::nullopt;
}

}  // namespace

std::string encode(const PhoneRecord& record) {
  StringSink sink;
  JsonWriter json{sink};
  json.beginObject().key("files").beginArray();
  for (const FileRecord& file : record.files) {
    json.beginObject()
        .field("captured", dateText(file.date, true))
        .field("cloudID", file.cloudID)
        .field("hasSafeName", file.hasSafeName ? std::optional{true} : std::nullopt)
        .field("keptInsteadOf", file.keptInsteadOf)
        .field("localID", file.localID)
        .field("modified", dateText(file.date, false))
        .field("path", file.path)
        .field("sha256", file.sha256)
        .field("size", file.size)
        .endObject();
  }
  const NumberedMakings makings = numbered(record.folders);
  json.endArray().field("firstTransfer", iso8601(record.firstTransfer));
  encodeFolders(json, record.folders, makings);
  json.field("label", record.label).field("lastTransfer", iso8601(record.lastTransfer));
  encodeMakings(json, makings);
  json.field("model", record.model)
      .field("phoneHash", record.phoneHash)
      .field("schemaVersion", record.schemaVersion)
      .endObject();
  json.finish();
  return sink.text();
}

std::optional<PhoneRecord> decode(std::string_view json) {
  if (auto record = PlainRecord{json}.take()) return record;
  // Notes that are wrong are left out; the record itself stays good.
  auto record = read(json, true);
  return record ? std::move(record) : read(json, false);
}

std::optional<PhoneRecord> decode(const std::function<std::unique_ptr<ByteReader>()>& open) {
  auto record = read(*open(), true);
  return record ? std::move(record) : read(*open(), false);
}

bool beginsAsEncoded(std::string_view text) { return text.starts_with(encodedBegin); }

}  // namespace tavrix::DestinationMarker
