#include "device/metadata/MetadataCache.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>
#include <vector>

#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/FileReader.h"
#include "foundation/files/PrivateFolder.h"
#include "media/Snapshot.h"
#include "naming/FolderName.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view filePrefix = "metadata-";
constexpr std::string_view linesSuffix = ".jsonl";
constexpr std::string_view legacySuffix = ".json";
constexpr std::uint64_t maxLegacyBytes = std::uint64_t{1} << 29U;

std::string fileName(const std::string& phoneKey, std::string_view suffix) {
  return fmt::format("{}{}{}", filePrefix, phoneKey, suffix);
}

std::string pathOf(const std::string& directory, const std::string& name) {
  return (fs::path{directory} / name).string();
}

/// Returns the shortest digits that give the number back, always with a point or an exponent:
/// "0.0", "1779364800.5", "1e+17".
std::string shortestText(double number) {
  const double size = std::abs(number);
  const bool isPlain = size == 0 || (size >= 1e-4 && size < 0x1p54);
  std::string text = fmt::format("{}", number);
  if (isPlain && text.find('e') != std::string::npos) text = fmt::format("{:.0f}", number);
  return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

/// Separates key and folder of a record that is not the last one added under its key.
constexpr char folderMark = '\0';

std::string keyInFolder(std::string_view key, const std::optional<std::string>& dir) {
  return std::string{key} + folderMark + dir.value_or("");
}

std::string_view plainKey(std::string_view key) { return key.substr(0, key.find(folderMark)); }

MetadataCache::Records loadLines(const std::string& phoneKey, const std::string& directory) {
  try {
    const std::string path = pathOf(directory, fileName(phoneKey, linesSuffix));
    std::error_code error;
    const auto bytes = fs::file_size(path, error);
    return readJsonLines(*openFileForReading(path), error ? 0 : bytes);
  } catch (const FileError&) {
    return {};
  }
}

/// Returns the text of a legacy file. Throws FileError.
std::string legacyText(const std::string& name, const std::string& directory) {
  return openFolder(directory)->readFile(name, maxLegacyBytes);
}

MetadataCache::Records legacyRecords(MetadataCache cache) {
  MetadataCache::Records records;
  for (auto& [key, item] : cache.records) {
    if (MetadataCache::isIncomplete(item)) continue;
    std::string ownKey = MetadataCache::key(item);
    records.insert_or_assign(std::move(ownKey), std::move(item));
  }
  return records;
}

class FileSink : public TextSink {
 public:
  explicit FileSink(WritableFile& file) : file_(file) {}
  void write(std::string_view text) override {
    buffer_ += text;
    if (buffer_.size() >= bufferBytes) flush();
  }
  void flush() {
    file_.append(std::as_bytes(std::span{buffer_}));
    buffer_.clear();
  }

 private:
  static constexpr std::size_t bufferBytes = 256 * 1024;
  WritableFile& file_;
  std::string buffer_;
};

std::uint64_t countLines(const std::string& path) {
  const auto file = openFileForReading(path);
  std::vector<char> buffer(std::size_t{1} << 16U);
  std::uint64_t lines = 0;
  char last = '\n';
  for (std::size_t count = 0; (count = file->read(buffer)) > 0;) {
    const auto end = buffer.begin() + static_cast<std::ptrdiff_t>(count);
    lines += static_cast<std::uint64_t>(std::count(buffer.begin(), end, '\n'));
    last = *(end - 1);
  }
  return lines + (last == '\n' ? 0U : 1U);
}

std::uint64_t countRecords(const std::string& directory, const std::string& name) {
  try {
    if (name.ends_with(linesSuffix)) return countLines(pathOf(directory, name));
    if (!name.ends_with(legacySuffix)) return 0;
    const auto cache = MetadataCache::decodeLegacy(legacyText(name, directory));
    return cache ? cache->records.size() : 0;
  } catch (const FileError&) {
    return 0;
  }
}

/// Returns the names of the cache files of all phones; empty if there is no directory.
std::vector<std::string> cacheFiles(const std::string& directory) {
  try {
    auto names = openFolder(directory)->names();
    std::erase_if(names, [](const std::string& name) { return !name.starts_with(filePrefix); });
    return names;
  } catch (const FileError&) {
    return {};
  }
}

}  // namespace

std::string MetadataCache::key(std::string_view name, std::uint64_t size,
                               std::optional<double> date) {
  const fmt::format_int bytes{size};
  const std::string seconds = shortestText(date.value_or(0));
  std::string key;
  key.reserve(name.size() + bytes.size() + seconds.size() + 2);
  key.append(name).append("|").append(bytes.data(), bytes.size()).append("|").append(seconds);
  return key;
}

std::string MetadataCache::key(const SnapshotItem& item) {
  return key(item.name, item.size, item.itemDate);
}

bool MetadataCache::isIncomplete(const SnapshotItem& item) {
  const auto kind = mediaKindOf(item.kind);
  return !item.px && kind && isPictureKind(*kind);
}

bool MetadataCache::lacksContentID(const SnapshotItem& item) {
  if (item.contentID) return false;
  const auto kind = mediaKindOf(item.kind);
  // Other stills and films are never parts of a Live Photo and need not be read again.
  return (kind == MediaKind::photo && item.cam == true) ||
         (kind == MediaKind::video && lowerCased(item.name).ends_with(".mov"));
}

SnapshotItem MetadataCache::record(SnapshotItem item) {
  if (lacksContentID(item)) item.contentID.emplace();
  return item;
}

void MetadataCache::add(Records& records, std::string key, SnapshotItem item) {
  // If the key exists already, neither argument is moved from.
  const auto [found, isNew] = records.try_emplace(std::move(key), std::move(item));
  if (isNew) return;
  SnapshotItem earlier = std::exchange(found->second, std::move(item));
  if (earlier.dir == found->second.dir) return;
  std::string own = keyInFolder(found->first, found->second.dir);
  std::string other = keyInFolder(found->first, earlier.dir);
  records.erase(own);
  records.insert_or_assign(std::move(other), std::move(earlier));
}

const SnapshotItem* MetadataCache::find(const Records& records, std::string_view key,
                                        const std::optional<std::string>& dir, bool shared) {
  const auto last = records.find(key);
  if (last == records.end()) return nullptr;
  if (last->second.dir == dir) return &last->second;
  const auto own = records.find(keyInFolder(key, dir));
  if (own != records.end()) return &own->second;
  return shared ? nullptr : &last->second;
}

std::string MetadataCache::phoneKey(const std::optional<std::string>& serialNumber) {
  return serialNumber && !serialNumber->empty() ? FolderName::sanitise(*serialNumber) : "unknown";
}

MetadataCache::Records MetadataCache::load(const std::string& phoneKey,
                                           const std::string& directory) {
  if (!legacyExists(phoneKey, directory)) return loadLines(phoneKey, directory);
  Records records;
  try {
    auto legacy = decodeLegacy(legacyText(fileName(phoneKey, legacySuffix), directory));
    if (legacy) records = legacyRecords(*std::move(legacy));
  } catch (const FileError&) {
    records = {};
  }
  for (auto& [key, item] : loadLines(phoneKey, directory)) {
    records.insert_or_assign(key, std::move(item));
  }
  return records;
}

void MetadataCache::save(const Records& records, const std::string& phoneKey,
                         const std::string& directory) {
  // In a fixed order, so that equal records give equal files.
  std::vector<const Records::value_type*> entries;
  entries.reserve(records.size());
  for (const auto& entry : records) entries.push_back(&entry);
  std::sort(entries.begin(), entries.end(), [](const auto* a, const auto* b) {
    const int order = plainKey(a->first).compare(plainKey(b->first));
    return order != 0 ? order < 0 : a->second.dir < b->second.dir;
  });
  const auto folder = openPrivateFolder(directory);
  writeFileAtomically(*folder, fileName(phoneKey, linesSuffix), [&](WritableFile& file) {
    FileSink sink{file};
    for (const auto* const entry : entries) Snapshot::writeLine(entry->second, sink);
    sink.flush();
  });
  removeLeftOvers(*folder, fileName(phoneKey, linesSuffix));
}

bool MetadataCache::legacyExists(const std::string& phoneKey, const std::string& directory) {
  std::error_code error;
  return fs::is_regular_file(pathOf(directory, fileName(phoneKey, legacySuffix)), error);
}

void MetadataCache::migrate(const std::string& phoneKey, const std::string& directory) {
  if (!legacyExists(phoneKey, directory)) return;
  const std::string legacyName = fileName(phoneKey, legacySuffix);
  // The legacy file is read first: if it cannot be read now, it may be readable another day.
  const auto legacy = decodeLegacy(legacyText(legacyName, directory));
  // A damaged file stays: it may be repaired by hand, or a later reader may understand it.
  if (!legacy) return;
  Records records = legacyRecords(*legacy);
  for (auto& [key, item] : loadLines(phoneKey, directory)) {
    records.insert_or_assign(key, std::move(item));
  }
  save(records, phoneKey, directory);
  const Records readBack = loadLines(phoneKey, directory);
  const bool isWhole = readBack.size() == records.size() &&
                       std::all_of(records.begin(), records.end(), [&](const auto& entry) {
                         return readBack.contains(entry.first);
                       });
  if (!isWhole) throw MigrationError{MigrationError::Kind::verificationFailed};
  openFolder(directory)->removeFile(legacyName);
}

std::uint64_t MetadataCache::countCachedRecords(const std::string& directory) {
  std::uint64_t count = 0;
  for (const std::string& name : cacheFiles(directory)) count += countRecords(directory, name);
  return count;
}

MetadataCache::Removal MetadataCache::reset(const std::string& directory) {
  Removal removal;
  for (const std::string& name : cacheFiles(directory)) {
    std::error_code error;
    fs::remove_all(pathOf(directory, name), error);
    ++(error ? removal.failed : removal.removed);
  }
  return removal;
}

}  // namespace tavrix
