#include <array>
#include <cmath>
#include <cstring>
#include <optional>

#include "media/Snapshot.h"

namespace tavrix {
namespace {

enum class Field {
  name,
  dir,
  kind,
  size,
  itemDate,
  exifDate,
  exifOffset,
  lat,
  lon,
  px,
  py,
  cam,
  contentID
};

constexpr std::array<std::string_view, 13> fieldNames{
    "name", "dir", "kind", "size", "itemDate", "exifDate", "exifOffset",
    "lat",  "lon", "px",   "py",   "cam",      "contentID"};

std::string_view nameOf(Field field) { return fieldNames[static_cast<std::size_t>(field)]; }

/// Compares with memcmp, which the compiler turns into comparisons of whole words.
template <std::size_t size>
bool is(std::string_view key, const char (&name)[size]) {
  return std::memcmp(key.data(), name, size - 1) == 0;
}

std::optional<Field> fieldOf(std::string_view key) {
  switch (key.size()) {
    case 2:
      if (is(key, "px")) return Field::px;
      if (is(key, "py")) return Field::py;
      break;
    case 3:
      if (is(key, "cam")) return Field::cam;
      if (is(key, "dir")) return Field::dir;
      if (is(key, "lat")) return Field::lat;
      if (is(key, "lon")) return Field::lon;
      break;
    case 4:
      if (is(key, "kind")) return Field::kind;
      if (is(key, "name")) return Field::name;
      if (is(key, "size")) return Field::size;
      break;
    case 8:
      if (is(key, "exifDate")) return Field::exifDate;
      if (is(key, "itemDate")) return Field::itemDate;
      break;
    case 9:
      if (is(key, "contentID")) return Field::contentID;
      break;
    case 10:
      if (is(key, "exifOffset")) return Field::exifOffset;
      break;
    default:
      break;
  }
  return std::nullopt;
}

/// Builds items from the events of the file. Values of unknown keys are ignored.
class ItemBuilder : public JsonHandler {
 public:
  explicit ItemBuilder(const std::function<void(SnapshotItem&&)>& receiver) : receiver_(receiver) {}

  SnapshotError errorAt(JsonPosition position) const {
    return {problem_, position, count_, problemField_};
  }
  bool hasProblem() const { return hasProblem_; }
  std::uint64_t count() const { return count_; }

  bool null() override {
    if (isPassing()) return true;
    if (depth_ < 2) return refuse(SnapshotError::Kind::notAList);
    if (isRequired(field_)) return refuse(SnapshotError::Kind::wrongType, nameOf(field_));
    clear(field_);
    return true;
  }
  bool boolean(bool value) override {
    if (isPassing()) return true;
    if (depth_ < 2) return refuse(SnapshotError::Kind::notAList);
    if (field_ != Field::cam) return refuse(SnapshotError::Kind::wrongType, nameOf(field_));
    item_.cam = value;
    return true;
  }
  bool integer(std::int64_t value) override {
    if (isPassing()) return true;
    if (depth_ == 2 && (field_ == Field::px || field_ == Field::py)) return setPixels(value);
    return number(static_cast<double>(value));
  }
  bool unsignedInteger(std::uint64_t value) override {
    if (isPassing()) return true;
    if (depth_ == 2 && field_ == Field::size) return setSize(value);
    if (depth_ == 2 && (field_ == Field::px || field_ == Field::py) && value <= INT64_MAX) {
      return setPixels(static_cast<std::int64_t>(value));
    }
    return number(static_cast<double>(value));
  }
  bool number(double value) override;
  bool string(std::string_view value) override;
  bool key(std::string_view name) override {
    if (depth_ != 2) return true;
    const auto field = fieldOf(name);
    isKnown_ = field.has_value();
    if (isKnown_) field_ = *field;
    return true;
  }
  bool startObject() override {
    ++depth_;
    if (depth_ == 1) return refuse(SnapshotError::Kind::notAList);
    if (depth_ > 2) return isKnown_ ? refuse(SnapshotError::Kind::wrongType, nameOf(field_)) : true;
    if (++count_ > Snapshot::maxItems) return refuse(SnapshotError::Kind::tooLarge);
    item_ = {};
    hasName_ = hasKind_ = hasSize_ = false;
    return true;
  }
  bool endObject() override { return --depth_ == 1 ? finishItem() : true; }
  bool startArray() override {
    ++depth_;
    if (depth_ == 1) return true;
    if (depth_ == 2) return refuse(SnapshotError::Kind::notAList);
    return isKnown_ ? refuse(SnapshotError::Kind::wrongType, nameOf(field_)) : true;
  }
  bool endArray() override {
    --depth_;
    return true;
  }

 private:
  static bool isRequired(Field field) {
    return field == Field::name || field == Field::kind || field == Field::size;
  }
  /// Returns true inside the value of an unknown key.
  bool isPassing() const { return depth_ > 2 || (depth_ == 2 && !isKnown_); }

  bool refuse(SnapshotError::Kind kind, std::string_view field = {}) {
    hasProblem_ = true;
    problem_ = kind;
    problemField_ = field;
    return false;
  }
  bool setPixels(std::int64_t value) {
    (field_ == Field::px ? item_.px : item_.py) = value;
    return true;
  }
  bool setSize(std::uint64_t value) {
    item_.size = value;
    hasSize_ = true;
    return true;
  }
  bool finishItem() {
    if (!hasName_) return refuse(SnapshotError::Kind::missingField, "name");
    if (!hasKind_) return refuse(SnapshotError::Kind::missingField, "kind");
    if (!hasSize_) return refuse(SnapshotError::Kind::missingField, "size");
    receiver_(std::move(item_));
    return true;
  }
  void clear(Field field);

  const std::function<void(SnapshotItem&&)>& receiver_;
  SnapshotItem item_;
  std::uint64_t count_ = 0;
  int depth_ = 0;
  Field field_ = Field::name;
  bool isKnown_ = false;
  bool hasName_ = false;
  bool hasKind_ = false;
  bool hasSize_ = false;
  bool hasProblem_ = false;
  SnapshotError::Kind problem_ = SnapshotError::Kind::notJson;
  std::string problemField_;
};

bool ItemBuilder::number(double value) {
  if (isPassing()) return true;
  if (depth_ < 2) return refuse(SnapshotError::Kind::notAList);
  switch (field_) {
    case Field::itemDate:
      item_.itemDate = value;
      return true;
    case Field::lat:
      item_.lat = value;
      return true;
    case Field::lon:
      item_.lon = value;
      return true;
    case Field::size:
      // A whole number may be written with a decimal point or an exponent.
      if (!(value >= 0 && value < 0x1p64 && value == std::floor(value))) {
        return refuse(SnapshotError::Kind::outOfRange, nameOf(field_));
      }
      return setSize(static_cast<std::uint64_t>(value));
    case Field::px:
    case Field::py:
      if (!(std::abs(value) < 0x1p53 && value == std::floor(value))) {
        return refuse(SnapshotError::Kind::outOfRange, nameOf(field_));
      }
      return setPixels(static_cast<std::int64_t>(value));
    default:
      return refuse(SnapshotError::Kind::wrongType, nameOf(field_));
  }
}

bool ItemBuilder::string(std::string_view value) {
  if (isPassing()) return true;
  if (depth_ < 2) return refuse(SnapshotError::Kind::notAList);
  switch (field_) {
    case Field::name:
      item_.name = value;
      hasName_ = true;
      return true;
    case Field::kind:
      item_.kind = value;
      hasKind_ = true;
      return true;
    case Field::dir:
      item_.dir = value;
      return true;
    case Field::exifDate:
      item_.exifDate = value;
      return true;
    case Field::exifOffset:
      item_.exifOffset = value;
      return true;
    case Field::contentID:
      item_.contentID = value;
      return true;
    default:
      return refuse(SnapshotError::Kind::wrongType, nameOf(field_));
  }
}

void ItemBuilder::clear(Field field) {
  switch (field) {
    case Field::dir:
      item_.dir.reset();
      break;
    case Field::itemDate:
      item_.itemDate.reset();
      break;
    case Field::exifDate:
      item_.exifDate.reset();
      break;
    case Field::exifOffset:
      item_.exifOffset.reset();
      break;
    case Field::lat:
      item_.lat.reset();
      break;
    case Field::lon:
      item_.lon.reset();
      break;
    case Field::px:
      item_.px.reset();
      break;
    case Field::py:
      item_.py.reset();
      break;
    case Field::cam:
      item_.cam.reset();
      break;
    case Field::contentID:
      item_.contentID.reset();
      break;
    case Field::name:
    case Field::kind:
    case Field::size:
      break;
  }
}

SnapshotError snapshotError(const JsonError& error, const ItemBuilder& builder) {
  if (builder.hasProblem()) return builder.errorAt(error.position());
  const bool isSyntax = error.kind() == JsonError::Kind::syntax;
  const auto kind = isSyntax ? SnapshotError::Kind::notJson : SnapshotError::Kind::tooLarge;
  return {kind, error.position(), builder.count(), {}};
}

}  // namespace

void Snapshot::readEach(ByteReader& source, const std::function<void(SnapshotItem&&)>& receiver) {
  ItemBuilder builder{receiver};
  try {
    readJson(source, builder);
  } catch (const JsonError& error) {
    throw snapshotError(error, builder);
  }
}

std::vector<SnapshotItem> Snapshot::read(ByteReader& source) {
  std::vector<SnapshotItem> items;
  readEach(source, [&](SnapshotItem&& item) { items.push_back(std::move(item)); });
  return items;
}

}  // namespace tavrix
