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

/// Why a snapshot could not be read, and where in it.
class SnapshotError : public std::exception {
 public:
  enum class Kind {
    notJson,       ///< no JSON, or no UTF-8
    tooLarge,      ///< nested too deep, a value too long, or more items than `Snapshot::maxItems`
    notAList,      ///< the file is no array of objects
    missingField,  ///< an item lacks `field`
    wrongType,     ///< `field` has a value of another type
    outOfRange,    ///< the number of `field` does not fit
  };

  SnapshotError(Kind kind, JsonPosition position, std::uint64_t item, std::string field)
      : kind_(kind), position_(position), item_(item), field_(std::move(field)) {}
  Kind kind() const { return kind_; }
  JsonPosition position() const { return position_; }
  /// The number of the item in the list, from 1.
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

/// More than any phone holds; a file with more is nonsense that would only fill the memory.
inline constexpr std::uint64_t maxItems = 5'000'000;

/// Hands on the items one by one, so that none stays in memory. Throws SnapshotError.
void readEach(ByteReader& source, const std::function<void(SnapshotItem&&)>& receiver);
/// All items. Throws SnapshotError.
std::vector<SnapshotItem> read(ByteReader& source);
/// The catalogue: one asset per item. An item whose id is taken gets the first free of "#2", "#3",
/// … after it. Throws SnapshotError.
std::vector<MediaAsset> readAssets(ByteReader& source, const TimeZone& zone);
/// The catalogue of items that are in memory already, with the ids that reading them from a file
/// would give.
std::vector<MediaAsset> assetsOf(const std::vector<SnapshotItem>& items, const TimeZone& zone);

/// Writes the list pretty-printed with sorted keys; absent fields are left out.
void write(const std::vector<SnapshotItem>& items, TextSink& sink);
/// Writes one item on a line of its own with sorted keys; absent fields are left out.
void writeLine(const SnapshotItem& item, TextSink& sink);
/// Writes the list as a file of `folder`, replacing an earlier one in one step. Throws FileError.
void write(const std::vector<SnapshotItem>& items, Folder& folder, const std::string& fileName);

}  // namespace Snapshot

}  // namespace tavrix
