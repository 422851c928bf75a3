#pragma once

#include <exception>
#include <string>
#include <utility>

#include "foundation/json/JsonReader.h"
#include "foundation/json/JsonWriter.h"
#include "history/TransferRecord.h"

namespace tavrix {

class RecordFields;

class TransferRecord::RecordError : public std::exception {
 public:
  enum class Kind {
    newerSchema,   ///< written by a newer version of the program
    notJson,       ///< or not UTF-8, or nested too deeply; see position()
    missingField,  ///< see field()
    wrongValue,    ///< see field()
  };

  static RecordError newerSchema(std::int64_t version) {
    return {Kind::newerSchema, version, {}, {}};
  }
  static RecordError notJson(JsonPosition position) { return {Kind::notJson, 0, {}, position}; }
  /// `field` is the path of the field, such as "totals.shots".
  static RecordError atField(Kind kind, std::string field) {
    return {kind, 0, std::move(field), {}};
  }

  Kind kind() const { return kind_; }
  std::int64_t version() const { return version_; }
  const std::string& field() const { return field_; }
  JsonPosition position() const { return position_; }
  const char* what() const noexcept override { return "RecordError"; }

 private:
  RecordError(Kind kind, std::int64_t version, std::string field, JsonPosition position)
      : kind_(kind), version_(version), field_(std::move(field)), position_(position) {}

  Kind kind_;
  std::int64_t version_;
  std::string field_;
  JsonPosition position_;
};

namespace TransferRecordCoding {

/// Writes the record as pretty-printed JSON with sorted keys, piece by piece.
void encode(const TransferRecord& record, TextSink& sink);
std::string encode(const TransferRecord& record);

/// Reads a record of this layout or an older one: a place on each shot instead of on the folder, or
/// a place with one "city" instead of names. Skips unknown keys. Shots are converted while they are
/// read, so that little memory is used beyond the record itself. Throws RecordError; errors of the
/// source pass through.
TransferRecord decode(ByteReader& source);
TransferRecord decode(std::string_view json);

/// As decode(), but checks the folders without keeping them; for lists of runs.
TransferRecord decodeWithoutFolders(ByteReader& source);

/// Encode and decode parts of a record.
void encode(const TransferRecord::Totals& totals, JsonWriter& json);
void encode(const TransferRecord::File& file, JsonWriter& json);
TransferRecord::Totals totalsFrom(const RecordFields& fields);

}  // namespace TransferRecordCoding

}  // namespace tavrix
