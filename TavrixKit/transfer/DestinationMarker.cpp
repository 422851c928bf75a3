#include "transfer/DestinationMarker.h"

#include <algorithm>
#include <array>
#include <utility>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/json/JsonReader.h"

namespace tavrix::DestinationMarker {
namespace {

constexpr std::string_view textFileName = "phone-records.txt";
constexpr std::string_view textFileContent =
    "Records of the phones that copied photos into this folder. Safe to delete; the next copy will "
    "start "
    "over.\n";
constexpr std::string_view recordBegin = "phone-";
constexpr std::string_view recordEnding = ".json";
constexpr std::size_t recordDigits = 8;
constexpr std::size_t recordStemSize = recordBegin.size() + recordDigits;

/// Returns true if a name has the exact form of a record's name. "phone-list.json" may be any file
/// of the user's, and "phone-64de5d38 2.json" is a copy of a record.
bool isRecordName(std::string_view name) {
  return name.size() == recordStemSize + recordEnding.size() && name.starts_with(recordBegin) &&
         name.ends_with(recordEnding) &&
         name.substr(recordBegin.size(), recordDigits).find_first_not_of("0123456789abcdef") ==
             std::string_view::npos;
}

/// Returns true if a text can begin a record, which is a JSON object.
bool beginsObject(std::string_view text) {
  text = withoutByteOrderMark(text);
  const auto begin = text.find_first_not_of(" \t\r\n");
  return begin != std::string_view::npos && text[begin] == '{';
}

/// Hands out a piece that was read already, then the rest of its file.
class PieceAndRest : public ByteReader {
 public:
  PieceAndRest(std::string_view piece, ByteReader& rest) : piece_(piece), rest_(rest) {}

  std::size_t read(std::span<char> buffer) override {
    if (piece_.empty()) return rest_.read(buffer);
    const std::size_t count = piece_.copy(buffer.data(), buffer.size());
    piece_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view piece_;
  ByteReader& rest_;
};

/// Returns the rest of a text. Returns nullopt as soon as it holds a NUL, as the hole of a sparse
/// file does, or is longer than `maxBytes`.
std::optional<std::string> wholeText(ByteReader& file, std::uint64_t bytes,
                                     std::uint64_t maxBytes) {
  std::string text;
  text.reserve(bytes);
  std::array<char, std::size_t{1} << 16U> buffer;
  for (std::size_t count = 0; (count = file.read(buffer)) > 0;) {
    const std::string_view piece{buffer.data(), count};
    if (piece.find('\0') != piece.npos || text.size() + count > maxBytes) return std::nullopt;
    text += piece;
  }
  return text;
}

/// Returns nullopt as soon as a file is no record, or is longer than `maxBytes`. A text that this
/// program did not write is never in memory as a whole.
std::optional<PhoneRecord> decodeFile(const Folder& destination, const std::string& name,
                                      std::uint64_t maxBytes) {
  const auto status = destination.status(name);
  if (!status || status->size > maxBytes) return std::nullopt;
  std::array<char, std::size_t{1} << 12U> buffer;
  const auto file = destination.openFile(name);
  const std::string_view begin{buffer.data(), file->read(buffer)};
  if (!beginsObject(begin)) return std::nullopt;
  if (!beginsAsEncoded(begin)) return decode([&] { return destination.openFile(name); });
  PieceAndRest whole{begin, *file};
  const auto text = wholeText(whole, status->size, maxBytes);
  return text ? decode(*text) : std::nullopt;
}

std::optional<PhoneRecord> loadRecord(const Folder& destination, const std::string& name,
                                      std::uint64_t maxBytes = Limits{}.bytesOfRecord) {
  try {
    return decodeFile(destination, name, maxBytes);
  } catch (const MarkerError& error) {
    throw MarkerError{name, error.version()};
  } catch (const FileError& error) {
    if (error.operation() == FileOperation::list) throw;
    return std::nullopt;
  }
}

/// Returns the names of the files that are beyond the limits if the smallest are read first.
StringSet beyond(const Folder& destination, const std::vector<std::string>& names,
                 const Limits& limits) {
  std::vector<std::pair<std::uint64_t, std::string>> bySize;
  for (const std::string& name : names) {
    const auto status = destination.status(name);
    bySize.emplace_back(status ? status->size : 0, name);
  }
  std::sort(bySize.begin(), bySize.end());
  StringSet result;
  std::uint64_t sum = 0;
  for (auto& [bytes, name] : bySize) {
    const bool fits = bytes <= limits.bytesOfRecord && bytes <= limits.bytesOfAll - sum;
    if (fits) sum += bytes;
    if (!fits) result.insert(std::move(name));
  }
  return result;
}

/// Returns true if a record names a phone's file at the path.
bool names(const Marker& marker, const std::string& path) {
  return std::any_of(marker.records.begin(), marker.records.end(), [&](const PhoneRecord& record) {
    return std::any_of(record.files.begin(), record.files.end(),
                       [&](const FileRecord& file) { return file.path == path; });
  });
}

/// Renames the file that is in the way of a record to the first free name.
void setAside(Folder& destination, const std::string& name) {
  std::string aside = name + ".damaged";
  for (int number = 2; !destination.renameWithoutReplacing(name, aside); ++number) {
    aside = name + ".damaged-" + std::to_string(number);
  }
}

/// Gives the files that were found unchanged what their earlier entries say besides.
void keepDigests(std::vector<FileRecord>& landed, const PhoneRecord& earlier) {
  StringMap<const FileRecord*> byPath;
  for (const FileRecord& file : earlier.files) byPath[file.path] = &file;
  for (FileRecord& file : landed) {
    const auto found = byPath.find(file.path);
    if (found == byPath.end()) continue;
    const FileRecord& before = *found->second;
    if (before.size != file.size || before.localID != file.localID) continue;
    file.hasSafeName = file.hasSafeName || before.hasSafeName;
    if (!file.sha256) file.sha256 = before.sha256;
  }
}

/// Returns the notes of both, by name, for the folders that have files. Those of `now` win.
std::vector<FolderNote> mergedNotes(const std::vector<FolderNote>& earlier,
                                    std::vector<FolderNote> now,
                                    const std::vector<FileRecord>& files) {
  absl::flat_hash_set<std::string_view> folders;
  for (const FileRecord& file : files) folders.insert(folderOf(file.path));
  now.insert(now.end(), earlier.begin(), earlier.end());
  std::stable_sort(now.begin(), now.end(),
                   [](const auto& a, const auto& b) { return a.name < b.name; });
  now.erase(std::unique(now.begin(), now.end(),
                        [](const auto& a, const auto& b) { return a.name == b.name; }),
            now.end());
  std::erase_if(now, [&](const FolderNote& note) { return !folders.contains(note.name); });
  return now;
}

}  // namespace

std::string_view folderOf(std::string_view path) {
  const auto slash = path.find('/');
  return slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash);
}

const PhoneRecord* Marker::record(const std::string& phoneHash) const {
  const auto found = std::find_if(records.begin(), records.end(), [&](const PhoneRecord& record) {
    return record.phoneHash == phoneHash;
  });
  return found == records.end() ? nullptr : &*found;
}

std::vector<PhoneRecord> Marker::others(const std::string& phoneHash) const {
  std::vector<PhoneRecord> result;
  std::copy_if(records.begin(), records.end(), std::back_inserter(result),
               [&](const PhoneRecord& record) { return record.phoneHash != phoneHash; });
  return result;
}

std::set<std::string> Marker::labels() const {
  std::set<std::string> result;
  for (const PhoneRecord& record : records) result.insert(record.label);
  return result;
}

KnownAssets Marker::knownAssets(const std::string& phoneHash) const {
  KnownAssets known;
  const PhoneRecord* const phone = record(phoneHash);
  if (phone == nullptr) return known;
  known.byLocalID.reserve(phone->files.size());
  for (const FileRecord& file : phone->files) {
    const KnownAssets::Record entry{&file.path, file.size, file.date};
    if (file.cloudID) known.byCloudID.insert_or_assign(*file.cloudID, entry);
    if (!file.localID) continue;
    const auto [last, isNew] = known.byLocalID.try_emplace(*file.localID, entry);
    if (!isNew) known.earlier[*file.localID].push_back(std::exchange(last->second, entry));
  }
  return known;
}

std::string fileName(const std::string& phoneHash) {
  return std::string{recordBegin} + phoneHash.substr(0, recordDigits) + std::string{recordEnding};
}

bool isOwnFile(std::string_view path) {
  if (path == textFileName) return true;
  const std::string_view name = path.substr(0, path.find(".damaged"));
  const std::string_view ending = path.substr(name.size());
  return isRecordName(name) && ending.find('/') == std::string_view::npos;
}

Marker load(const Folder& destination, const Limits& limits) {
  Marker marker;
  auto candidates = destination.names();
  std::erase_if(candidates, [](const std::string& name) { return !isRecordName(name); });
  const StringSet tooMany = beyond(destination, candidates, limits);
  for (const std::string& name : candidates) {
    std::optional<PhoneRecord> record;
    if (!tooMany.contains(name)) record = loadRecord(destination, name, limits.bytesOfRecord);
    if (record) {
      marker.records.push_back(*std::move(record));
    } else {
      marker.damaged.push_back(name);
    }
  }
  // A phone may have a file of such a name, too.
  std::erase_if(marker.damaged, [&](const std::string& name) { return names(marker, name); });
  return marker;
}

void save(Folder& destination, const PhoneRecord& record) {
  const std::string name = fileName(record.phoneHash);
  if (destination.status(name)) {
    const auto earlier = loadRecord(destination, name);
    if (!earlier || earlier->phoneHash != record.phoneHash) setAside(destination, name);
  }
  writeFileAtomically(destination, name, encode(record));
  if (!destination.status(std::string{textFileName})) {
    writeFileAtomically(destination, std::string{textFileName}, textFileContent);
  }
}

void removeLeftOvers(Folder& destination) {
  for (const std::string& name : destination.names()) {
    const std::string record = name.substr(0, recordStemSize) + std::string{recordEnding};
    const bool isOurs =
        (isRecordName(record) && isTemporaryOf(name, record)) || isTemporaryOf(name, textFileName);
    if (isOurs) destination.removeFile(name);
  }
}

PhoneRecord updated(const PhoneRecord* earlier, PhoneRecord now,
                    const std::function<bool(const std::string& path)>& isStillThere) {
  // If several files landed under one path one after another, the last one is on disk.
  StringSet paths;
  std::vector<FileRecord> landed;
  for (auto file = now.files.rbegin(); file != now.files.rend(); ++file) {
    if (paths.insert(file->path).second) landed.push_back(std::move(*file));
  }
  std::reverse(landed.begin(), landed.end());
  now.files.clear();
  if (earlier != nullptr) {
    now.firstTransfer = earlier->firstTransfer;
    keepDigests(landed, *earlier);
    for (const FileRecord& file : earlier->files) {
      if (!paths.contains(file.path) && isStillThere(file.path)) now.files.push_back(file);
    }
  }
  now.files.insert(now.files.end(), std::make_move_iterator(landed.begin()),
                   std::make_move_iterator(landed.end()));
  now.folders = mergedNotes(earlier == nullptr ? std::vector<FolderNote>{} : earlier->folders,
                            std::move(now.folders), now.files);
  return now;
}

}  // namespace tavrix::DestinationMarker
