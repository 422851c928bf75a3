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

/// The metadata read from the files of one phone, kept so that a second pass reads only new files.
/// It is stored in the state folder, one file per phone; docs/cache.md describes the format. A
/// cache is never a source of truth: unreadable parts are treated as absent.
struct MetadataCache {
  /// The records by item key. If several records have the same key, the key leads to the one added
  /// last; the others are kept as well, and find() finds them by their folders.
  using Records = StringMap<SnapshotItem>;

  class MigrationError : public std::exception {
   public:
    enum class Kind {
      verificationFailed,  ///< the new file does not contain what was saved
    };
    explicit MigrationError(Kind kind) : kind_(kind) {}
    Kind kind() const { return kind_; }
    const char* what() const noexcept override { return "MigrationError"; }

   private:
    Kind kind_;
  };

  Records records;

  friend bool operator==(const MetadataCache&, const MetadataCache&) = default;

  /// Returns the key that identifies a file by name, size in bytes and date in seconds since 1970
  /// (0.0 without a date): "IMG_0001.HEIC|1234|0.0".
  static std::string key(std::string_view name, std::uint64_t size, std::optional<double> date);
  static std::string key(const SnapshotItem& item);
  /// Returns true for a picture or film without a size in pixels. An earlier reader left the size
  /// out, so the file must be read again.
  static bool isIncomplete(const SnapshotItem& item);
  /// Returns true for a record of an earlier reader, which left the content identifier out although
  /// the file may have one: an iPhone writes it into stills and films.
  static bool lacksContentID(const SnapshotItem& item);
  /// Returns a record of the item. A missing content identifier becomes an empty one, where
  /// otherwise lacksContentID() would be true.
  static SnapshotItem record(SnapshotItem item);
  /// Returns a device's serial number in the form used in file names; "unknown" without one.
  static std::string phoneKey(const std::optional<std::string>& serialNumber);

  /// Adds a record; replaces an earlier one of the same key and folder.
  static void add(Records& records, std::string key, SnapshotItem item);
  /// Returns the record of the file with key `key` in folder `dir`, or nullptr if there is none.
  /// Unless the key is `shared` by files of several folders, a record of another folder matches
  /// too, because files are moved.
  static const SnapshotItem* find(const Records& records, std::string_view key,
                                  const std::optional<std::string>& dir, bool shared);

  /// Returns the records of a phone from both file formats. A JSON Lines record takes precedence
  /// over a legacy one, a later line over an earlier one. Incomplete records are left out. Never
  /// throws, whatever is on the disk.
  static Records load(const std::string& phoneKey, const std::string& directory);
  /// Writes the whole file in one step. Creates the directory and its parents. Throws FileError.
  static void save(const Records& records, const std::string& phoneKey,
                   const std::string& directory);

  /// Returns true if a phone has a cache file in the format of earlier versions.
  static bool legacyExists(const std::string& phoneKey, const std::string& directory);
  /// Converts the legacy file of a phone to the present format. Removes the legacy file only after
  /// the new file was read back complete. A legacy file in which nothing decodes stays. Throws
  /// MigrationError, FileError.
  static void migrate(const std::string& phoneKey, const std::string& directory);
  /// Decodes the legacy format: one JSON object whose member "records" maps keys to records. Leaves
  /// out records that do not decode. Returns nullopt if the text is not such an object, or if it
  /// has records but none of them decodes.
  static std::optional<MetadataCache> decodeLegacy(std::string_view json);

  /// Returns the number of records of all phones.
  static std::uint64_t countCachedRecords(const std::string& directory);

  struct Removal {
    std::uint64_t removed = 0;  ///< files
    std::uint64_t failed = 0;

    friend bool operator==(const Removal&, const Removal&) = default;
  };
  /// Removes the caches of all phones. Continues with the next file if one cannot be removed.
  static Removal reset(const std::string& directory);
};

/// Reads records from JSON Lines, one SnapshotItem per line. Skips lines that do not decode and
/// incomplete records. `fileBytes` is the size of the file, 0 if unknown; it serves to reserve
/// memory.
MetadataCache::Records readJsonLines(ByteReader& file, std::uint64_t fileBytes = 0);

}  // namespace tavrix
