#include <fmt/format.h>

#include "foundation/json/TextReader.h"
#include "history/RecordFields.h"
#include "history/TransferRecordCoding.h"

namespace tavrix::TransferRecordCoding {
namespace {

using Record = TransferRecord;
using Error = TransferRecord::RecordError;

Record::Place placeFrom(const RecordFields& fields) {
  Record::Place place;
  if (fields.find("names") != nullptr) {
    const auto& names = fields.required("names", fields.at("names").asObject());
    for (const auto& [language, name] : names) {
      place.names.emplace(language, fields.required("names", name.asString()));
    }
  } else if (const auto city = fields.optionalText("city")) {
    // Before names were stored by language, there was only the program's own language.
    place.names.emplace("ru", *city);
  }
  place.countryCode = fields.optionalText("countryCode");
  place.latitude = fields.number("latitude");
  place.longitude = fields.number("longitude");
  return place;
}

ReasonCode reasonCodeFrom(const RecordFields& fields) {
  ReasonCode reason;
  reason.code = fields.text("code");
  if (fields.find("systemError") != nullptr) {
    reason.systemError = static_cast<int>(fields.number("systemError"));
  }
  if (fields.find("expectedBytes") != nullptr) reason.expectedBytes = fields.count("expectedBytes");
  if (fields.find("receivedBytes") != nullptr) reason.receivedBytes = fields.count("receivedBytes");
  return reason;
}

Record::File fileFrom(const RecordFields& fields) {
  Record::File file;
  file.assetID = fields.text("assetID");
  file.role = fields.caseAt<Record::Role>("role");
  file.name = fields.text("name");
  file.savedName = fields.optionalText("savedName");
  file.path = fields.optionalText("path");
  file.bytes = fields.count("bytes");
  file.state = fields.caseAt<Record::PartState>("state");
  file.reason = fields.optionalText("reason");
  if (fields.find("reasonCode") != nullptr) {
    file.reasonCode = reasonCodeFrom(fields.object("reasonCode"));
  }
  file.keptOriginal = fields.flag("keptOriginal", false);
  return file;
}

Record::Shot shotFrom(const RecordFields& fields) {
  Record::Shot shot;
  shot.id = fields.text("id");
  shot.name = fields.text("name");
  shot.kind = fields.caseAt<Record::ShotKind>("kind");
  shot.captureDate = fields.optionalDate("captureDate");
  shot.latitude = fields.optionalNumber("latitude");
  shot.longitude = fields.optionalNumber("longitude");
  const JsonValue::Array& files = fields.list("files");
  shot.files.reserve(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    shot.files.push_back(fileFrom({files[i], fields, "files", i}));
  }
  shot.outcome = fields.caseAt<Record::Outcome>("outcome");
  return shot;
}

Record::Options optionsFrom(const RecordFields& fields) {
  Record::Options options;
  options.includePhotos = fields.flag("includePhotos", options.includePhotos);
  options.includeLive = fields.flag("includeLive", options.includeLive);
  options.liveOnlyPhoto = fields.flag("liveOnlyPhoto", options.liveOnlyPhoto);
  options.includeVideos = fields.flag("includeVideos", options.includeVideos);
  options.includeAAE = fields.flag("includeAAE", options.includeAAE);
  options.editedPolicy = fields.optionalText("editedPolicy").value_or("");
  options.onlyNew = fields.flag("onlyNew", options.onlyNew);
  options.skipOptimized = fields.flag("skipOptimized", options.skipOptimized);
  options.mode = fields.optionalText("mode").value_or("");
  options.granularity = fields.optionalText("granularity").value_or("");
  options.homeName = fields.optionalText("homeName");
  options.eventGapHours = fields.optionalNumber("eventGapHours").value_or(0);
  options.eventGapKm = fields.optionalNumber("eventGapKm").value_or(0);
  options.tripDistanceKm = fields.optionalNumber("tripDistanceKm");
  options.tripCityKm = fields.optionalNumber("tripCityKm");
  options.templateName = fields.optionalText("templateName").value_or("");
  options.photoFormat = fields.optionalText("photoFormat").value_or("");
  options.jpegQuality = fields.optionalNumber("jpegQuality").value_or(0);
  options.videoFormat = fields.optionalText("videoFormat").value_or("");
  options.container = fields.optionalText("container").value_or("");
  options.separatePhotoVideo = fields.flag("separatePhotoVideo", options.separatePhotoVideo);
  options.flattenSingleKind = fields.flag("flattenSingleKind", options.flattenSingleKind);
  options.fileNamePrefix = fields.optionalText("fileNamePrefix");
  return options;
}

/// Splits the events of a record into values of manageable size: the members of the record and of
/// each folder, and each shot.
class RecordReader : public JsonHandler {
 public:
  explicit RecordReader(bool keepsFolders) : keepsFolders_(keepsFolders) {}

  /// Returns the record. Call it after the whole text was read.
  Record take() {
    const RecordFields fields{record_, ""};
    checkVersion(fields);
    if (fault_) throw Error{*fault_};
    Record record;
    record.id = fields.required("id", Uuid::parse(fields.text("id")));
    record.startedAt = fields.date("startedAt");
    record.finishedAt = fields.date("finishedAt");
    record.status = fields.caseAt<Record::Status>("status");
    record.phoneName = fields.text("phoneName");
    record.phoneHash = fields.optionalText("phoneHash");
    record.destinationPath = fields.text("destinationPath");
    record.options = optionsFrom(fields.object("options"));
    record.totals = totalsFrom(fields.object("totals"));
    if (!hasFolders_) throw Error::atField(Error::Kind::missingField, "folders");
    record.folders = std::move(folders_);
    if (fields.find("notes") != nullptr) {
      for (const JsonValue& note : fields.list("notes")) {
        record.notes.push_back(fields.required("notes", note.asString()));
      }
    }
    return record;
  }

  bool null() override {
    return scalar([](JsonHandler& to) { to.null(); });
  }
  bool boolean(bool value) override {
    return scalar([=](JsonHandler& to) { to.boolean(value); });
  }
  bool integer(std::int64_t value) override {
    return scalar([=](JsonHandler& to) { to.integer(value); });
  }
  bool unsignedInteger(std::uint64_t value) override {
    return scalar([=](JsonHandler& to) { to.unsignedInteger(value); });
  }
  bool number(double value) override {
    return scalar([=](JsonHandler& to) { to.number(value); });
  }
  bool string(std::string_view value) override {
    return scalar([=](JsonHandler& to) { to.string(value); });
  }
  bool key(std::string_view name) override {
    if (piece_.isOpen()) return piece_.key(name);
    key_ = name;
    return true;
  }
  bool startObject() override {
    if (piece_.isOpen()) return piece_.startObject();
    if (level_ == Level::outside) {
      level_ = Level::record;
    } else if (level_ == Level::folders) {
      level_ = Level::folder;
      folderMembers_ = {JsonValue::Object{}};
      folder_ = {};
      shotCount_ = 0;
      shotPlace_.reset();
      hasShots_ = false;
    } else {
      piece_.startObject();
    }
    return true;
  }
  bool startArray() override {
    if (piece_.isOpen()) return piece_.startArray();
    if (level_ == Level::outside) return false;
    if (level_ == Level::record && key_ == "folders") {
      level_ = Level::folders;
      folders_.clear();
      folderCount_ = 0;
      hasFolders_ = true;
    } else if (level_ == Level::folder && key_ == "shots") {
      level_ = Level::shots;
      folder_.shots.clear();
      shotCount_ = 0;
      hasShots_ = true;
    } else {
      piece_.startArray();
    }
    return true;
  }
  bool endObject() override {
    if (piece_.isOpen()) return closePiece([](JsonHandler& to) { to.endObject(); });
    if (level_ == Level::folder) finishFolder();
    level_ = level_ == Level::folder ? Level::folders : Level::outside;
    return true;
  }
  bool endArray() override {
    if (piece_.isOpen()) return closePiece([](JsonHandler& to) { to.endArray(); });
    level_ = level_ == Level::shots ? Level::folder : Level::record;
    return true;
  }

 private:
  enum class Level { outside, record, folders, folder, shots };

  template <typename Feed>
  bool scalar(Feed feed) {
    if (level_ == Level::outside) return false;
    return closePiece(feed);
  }
  template <typename Feed>
  bool closePiece(Feed feed) {
    feed(piece_);
    if (!piece_.isOpen()) deliver(piece_.take());
    return true;
  }

  void deliver(JsonValue value) {
    switch (level_) {
      case Level::record:
        std::get<JsonValue::Object>(record_.data)[key_] = std::move(value);
        return;
      case Level::folder:
        std::get<JsonValue::Object>(folderMembers_.data)[key_] = std::move(value);
        return;
      case Level::shots:
        return convert([&] { addShot({value, shotPath()}); });
      case Level::folders:
        return convert([&] { (void)RecordFields{value, folderPath()}; });
      case Level::outside:
        return;
    }
  }
  /// A newer layout may differ, so a fault is reported only after the version was checked.
  template <typename Conversion>
  void convert(Conversion conversion) {
    if (fault_) return;
    try {
      conversion();
    } catch (const Error& error) {
      fault_ = error;
    }
  }
  void addShot(const RecordFields& fields) {
    Record::Shot shot = shotFrom(fields);
    if (keepsFolders_) folder_.shots.push_back(std::move(shot));
    ++shotCount_;
    if (!shotPlace_ && fields.find("place") != nullptr) {
      shotPlace_ = placeFrom(fields.object("place"));
    }
  }
  void finishFolder() {
    convert([&] {
      const RecordFields fields{folderMembers_, folderPath()};
      folder_.name = fields.text("name");
      if (!hasShots_) throw Error::atField(Error::Kind::missingField, fields.pathOf("shots"));
      folder_.place = shotPlace_;
      if (fields.find("place") != nullptr) folder_.place = placeFrom(fields.object("place"));
      if (keepsFolders_) folders_.push_back(std::move(folder_));
      ++folderCount_;
    });
  }
  std::string folderPath() const { return fmt::format("folders[{}]", folderCount_); }
  std::string shotPath() const { return fmt::format("{}.shots[{}]", folderPath(), shotCount_); }
  static void checkVersion(const RecordFields& fields) {
    const std::uint64_t version = fields.count("schemaVersion");
    if (version > static_cast<std::uint64_t>(Record::currentSchemaVersion)) {
      throw Error::newerSchema(
          static_cast<std::int64_t>(std::min<std::uint64_t>(version, INT64_MAX)));
    }
  }

  bool keepsFolders_;
  Level level_ = Level::outside;
  std::string key_;
  JsonValueBuilder piece_;
  JsonValue record_{JsonValue::Object{}};
  JsonValue folderMembers_{JsonValue::Object{}};
  Record::Folder folder_;
  std::size_t shotCount_ = 0;
  bool hasShots_ = false;
  std::optional<Record::Place> shotPlace_;  ///< of the folder's first shot that has one
  std::vector<Record::Folder> folders_;
  std::size_t folderCount_ = 0;
  bool hasFolders_ = false;
  std::optional<Error> fault_;
};

Record decodeWith(ByteReader& source, bool keepsFolders) {
  RecordReader reader{keepsFolders};
  try {
    readJson(source, reader);
  } catch (const JsonError& error) {
    throw Error::notJson(error.position());
  }
  return reader.take();
}

}  // namespace

Record::Totals totalsFrom(const RecordFields& fields) {
  Record::Totals totals;
  totals.shots = fields.count("shots");
  totals.onMac = fields.count("onMac");
  totals.alreadyThere = fields.count("alreadyThere");
  totals.failed = fields.count("failed");
  totals.optimized = fields.count("optimized");
  totals.bytesWritten = fields.count("bytesWritten");
  std::uint64_t rest = totals.shots;
  for (const auto part : {totals.onMac, totals.alreadyThere, totals.failed, totals.optimized}) {
    if (part > rest) throw Error::atField(Error::Kind::wrongValue, fields.pathOf("shots"));
    rest -= part;
  }
  return totals;
}

Record decode(ByteReader& source) { return decodeWith(source, true); }
Record decode(std::string_view json) {
  TextReader source{json};
  return decode(source);
}
Record decodeWithoutFolders(ByteReader& source) { return decodeWith(source, false); }

}  // namespace tavrix::TransferRecordCoding
