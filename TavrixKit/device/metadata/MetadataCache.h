#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/StringMap.h"
#include "foundation/json/JsonReader.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// What was read of the files of one phone, so that a second look reads only what is new. It lies
/// in the state folder, one file a phone; docs/cache.md tells the form. A cache is never a source
/// of truth: what is unreadable in it counts as absent.
struct MetadataCache {
  /// By the key of each item. Of several with one key the last one taken in; the others are there
  /// too, and find() knows them by their folders.
  using Records = StringMap<SnapshotItem>;

  class MigrationError : public std::exception {
   public:
    enum class Kind {
      verificationFailed,  ///< the new file does not hold what was saved
    };
    explicit MigrationError(Kind kind) : kind_(kind) {}
    Kind kind() const { return kind_; }
    const char* what() const noexcept override { return "MigrationError"; }

   private:
    Kind kind_;
  };

  Records records;

  friend bool operator==(const MetadataCache&, const MetadataCache&) = default;

  /// Identifies a file by name, size in bytes and date in seconds since 1970:
  /// "IMG_0001.HEIC|1234|0.0".
  static std::string key(std::string_view name, std::uint64_t size, std::optional<double> date);
  static std::string key(const SnapshotItem& item);
  /// A picture or film whose size in pixels nobody has read: an earlier reader left it out, and it
  /// is to be read again.
  static bool isIncomplete(const SnapshotItem& item);
  /// A device's serial number as it stands in file names; "unknown" without one.
  static std::string phoneKey(const std::optional<std::string>& serialNumber);

  /// Takes in a record, in place of an earlier one of the same key and folder.
  static void add(Records& records, std::string key, SnapshotItem item);
  /// What is known of a file with this key in this folder; null when there is nothing. Unless the
  /// key is `shared` by files of several folders, a record of another folder counts too: files are
  /// moved.
  static const SnapshotItem* find(const Records& records, std::string_view key,
                                  const std::optional<std::string>& dir, bool shared);

  /// The records of a phone, of both forms; a JSON Lines record counts more than a legacy one, a
  /// later line more than an earlier one. Incomplete ones are left out. Never throws for what is on
  /// the disk.
  static Records load(const std::string& phoneKey, const std::string& directory);
  /// Writes the whole file in one step; the directory and those above it are created. Throws
  /// FileError.
  static void save(const Records& records, const std::string& phoneKey,
                   const std::string& directory);

  /// Whether a phone's records are there in the form of earlier versions.
  static bool legacyExists(const std::string& phoneKey, const std::string& directory);
  /// Moves them into the present form. The legacy file is removed only when the new one was read
  /// back whole; one in which nothing decodes stays. Throws MigrationError, FileError.
  static void migrate(const std::string& phoneKey, const std::string& directory);
  /// The legacy form: one JSON object whose member "records" maps keys to records. Nothing when the
  /// text is no such thing, or holds records of which none decodes; one that does not decode is
  /// left out.
  static std::optional<MetadataCache> decodeLegacy(std::string_view json);

  /// The number of records over all phones.
  static std::uint64_t countCachedRecords(const std::string& directory);

  struct Removal {
    std::uint64_t removed = 0;  ///< files
    std::uint64_t failed = 0;

    friend bool operator==(const Removal&, const Removal&) = default;
  };
  /// Removes the caches of all phones, as far as it can.
  static Removal reset(const std::string& directory);
};

/// The records of JSON Lines, one SnapshotItem each; lines that do not decode are passed over.
/// `fileBytes`, when known, spares the growing of the map.
MetadataCache::Records readJsonLines(ByteReader& file, std::uint64_t fileBytes = 0);

}  // namespace tavrix
