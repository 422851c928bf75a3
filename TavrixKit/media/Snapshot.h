#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/files/Folder.h"
#include "foundation/json/JsonReader.h"
#include "foundation/json/JsonWriter.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// Why reading a snapshot failed, and at which position.
class SnapshotError : public std::exception {
 public:
  enum class Kind {
    notJson,       ///< not JSON, or not UTF-8
    tooLarge,      ///< nested too deep, a value too long, or more items than `Snapshot::maxItems`
    notAList,      ///< the file is not an array of objects
    missingField,  ///< an item lacks `field`
    wrongType,     ///< `field` has a value of another type
    outOfRange,    ///< the number in `field` does not fit
  };

  SnapshotError(Kind kind, JsonPosition position, std::uint64_t item, std::string field)
      : kind_(kind), position_(position), item_(item), field_(std::move(field)) {}
  Kind kind() const { return kind_; }
  JsonPosition position() const { return position_; }
  /// Returns the number of the item in the list, from 1.
  std::uint64_t item() const { return item_; }
  const std::string& field() const { return field_; }
  const char* what() const noexcept override { return "SnapshotError"; }

 private:
  Kind kind_;
  JsonPosition position_;
  std::uint64_t item_;
  std::string field_;
};

/// The snapshot file: a JSON array of SnapshotItem in catalogue order.
namespace Snapshot {

/// More than any phone holds. The limit keeps a senseless file from filling the memory.
inline constexpr std::uint64_t maxItems = 5'000'000;

/// Passes the items to `receiver` one by one and keeps none in memory. Throws SnapshotError.
void readEach(ByteReader& source, const std::function<void(SnapshotItem&&)>& receiver);
/// Returns all items. Throws SnapshotError.
std::vector<SnapshotItem> read(ByteReader& source);
/// Returns the catalogue: one asset per item. If an item's id is already taken, the first free
/// suffix of "#2", "#3", … is appended to it. Throws SnapshotError.
std::vector<MediaAsset> readAssets(ByteReader& source, const TimeZone& zone);
/// As readAssets(), for items that are already in memory; the assets get the same ids. `names` says
/// whether names may date files, as those of a folder.
std::vector<MediaAsset> assetsOf(const std::vector<SnapshotItem>& items, const TimeZone& zone,
                                 DatesFromNames names = DatesFromNames::ignored);

/// Writes the list pretty-printed with sorted keys. Omits absent fields.
void write(const std::vector<SnapshotItem>& items, TextSink& sink);
/// Writes one item on a line of its own with sorted keys. Omits absent fields.
void writeLine(const SnapshotItem& item, TextSink& sink);
/// Writes the list to a file of `folder`; replaces an existing file atomically. Throws FileError.
void write(const std::vector<SnapshotItem>& items, Folder& folder, const std::string& fileName);

}  // namespace Snapshot

}  // namespace tavrix
