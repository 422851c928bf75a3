#pragma once

#include <string>
#include <utility>

#include "foundation/json/JsonValue.h"
#include "history/TransferRecordCoding.h"

namespace tavrix {

/// Reads the members of one object of a record. A null member is treated as missing. Throws
/// TransferRecord::RecordError with the path of the member.
class RecordFields {
 public:
  using Error = TransferRecord::RecordError;

  /// `path` is the object's position, such as "totals"; empty for the record itself.
  RecordFields(const JsonValue& object, std::string path)
      : object_(object), path_(std::move(path)) {
    checkIsObject();
  }
  /// Creates the reader of an element of a list that is a member of `parent`, which must outlive
  /// it. The path is built only on demand, because there may be millions of elements.
  RecordFields(const JsonValue& object, const RecordFields& parent, std::string_view list,
               std::size_t index)
      : object_(object), parent_(&parent), list_(list), index_(index) {
    checkIsObject();
  }

  /// Returns nullptr if the member is missing.
  const JsonValue* find(std::string_view key) const {
    const JsonValue* const member = object_.member(key);
    return member == nullptr || member->isNull() ? nullptr : member;
  }
  const JsonValue& at(std::string_view key) const {
    const JsonValue* const member = find(key);
    if (member == nullptr) throw Error::atField(Error::Kind::missingField, pathOf(key));
    return *member;
  }
  RecordFields object(std::string_view key) const { return {at(key), pathOf(key)}; }
  const JsonValue::Array& list(std::string_view key) const {
    return required(key, at(key).asArray());
  }

  std::string text(std::string_view key) const { return required(key, at(key).asString()); }
  std::optional<std::string> optionalText(std::string_view key) const {
    return find(key) == nullptr ? std::nullopt : std::optional{text(key)};
  }
  bool flag(std::string_view key, bool whenMissing) const {
    return find(key) == nullptr ? whenMissing : required(key, at(key).asBool());
  }
  std::uint64_t count(std::string_view key) const { return required(key, at(key).asUnsigned()); }
  std::optional<double> optionalNumber(std::string_view key) const {
    return find(key) == nullptr ? std::nullopt : std::optional{required(key, at(key).asNumber())};
  }
  double number(std::string_view key) const { return required(key, at(key).asNumber()); }
  Instant date(std::string_view key) const { return required(key, parseIso8601(text(key))); }
  std::optional<Instant> optionalDate(std::string_view key) const {
    return find(key) == nullptr ? std::nullopt : std::optional{date(key)};
  }
  template <typename Enumeration>
  Enumeration caseAt(std::string_view key) const {
    return required(key, caseOf<Enumeration>(text(key)));
  }

  std::string pathOf(std::string_view key) const {
    const std::string own = path();
    return own.empty() ? std::string{key} : own + "." + std::string{key};
  }
  /// Returns the value. Throws if `value` is empty, which means that the member has the wrong type.
  template <typename Value>
  auto required(std::string_view key, const Value& value) const -> decltype(*value) {
    if (!value) throw Error::atField(Error::Kind::wrongValue, pathOf(key));
    return *value;
  }

 private:
  void checkIsObject() const {
    if (object_.asObject() == nullptr) throw Error::atField(Error::Kind::wrongValue, path());
  }
  std::string path() const {
    if (parent_ == nullptr) return path_;
    return parent_->pathOf(list_) + "[" + std::to_string(index_) + "]";
  }

  const JsonValue& object_;
  std::string path_;
  const RecordFields* parent_ = nullptr;  ///< set for an element of a list
  std::string_view list_;
  std::size_t index_ = 0;
};

}  // namespace tavrix
