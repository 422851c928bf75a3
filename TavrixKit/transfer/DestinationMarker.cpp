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

/// Reads a file that may be a record. Throws FileError with EFBIG if no more bytes may be read.
class RecordReader : public ByteReader {
 public:
  /// `left` is the number of bytes that may still be read; it decreases.
  RecordReader(const Folder& destination, const std::string& name, std::uint64_t& left)
      : name_(name), left_(left), file_(destination.openFile(name)) {}

  std::size_t read(std::span<char> buffer) override {
    const std::size_t count = file_->read(buffer);
    if (count > left_) throw FileError{FileOperation::read, name_, EFBIG};
    left_ -= count;
    return count;
  }

 private:
  const std::string& name_;
  std::uint64_t& left_;
  std::unique_ptr<ByteReader> file_;
};

/// Appends the rest of a file to a text. Returns nullopt as soon as it holds a NUL, as the hole of
/// a sparse file does, or is longer than `maxBytes`.
std::optional<std::string> wholeText(std::string text, ByteReader& file, std::uint64_t maxBytes) {
  std::array<char, std::size_t{1} << 16U> buffer;
  for (std::size_t count = 0; (count = file.read(buffer)) > 0;) {
    const std::string_view piece{buffer.data(), count};
    if (piece.find('\0') != piece.npos || text.size() + count > maxBytes) return std::nullopt;
    text += piece;
  }
  return text;
}

/// Returns nullopt as soon as a file is no record, or is longer than the limit. A text that this
/// program did not write is never in memory as a whole. Throws also FileError.
std::optional<PhoneRecord> decodeFile(const Folder& destination, const std::string& name,
                                      Limits& limits) {
  const auto status = destination.status(name);
  if (!status || status->size > limits.bytesOfRecord) return std::nullopt;
  std::array<char, std::size_t{1} << 12U> buffer;
  RecordReader file{destination, name, limits.bytesOfAll};
  const std::string_view begin{buffer.data(), file.read(buffer)};
  if (!beginsObject(begin)) return std::nullopt;
  if (!beginsAsEncoded(begin)) {
    return decode(
        [&] { return std::make_unique<RecordReader>(destination, name, limits.bytesOfAll); });
  }
  std::string text{begin};
  text.reserve(status->size);
  const auto whole = wholeText(std::move(text), file, limits.bytesOfRecord);
  return whole ? decode(*whole) : std::nullopt;
}

/// Returns true if a failure says nothing about the file: it is too much besides the others, or the
/// volume does not answer now.
bool isOfNoFile(const FileError& error) {
  return error.operation() == FileOperation::list || error.code() == EFBIG ||
         (meansLostVolume(error.code()) && error.code() != EIO);
}

std::optional<PhoneRecord> loadRecord(const Folder& destination, const std::string& name,
                                      Limits& limits) {
  try {
    return decodeFile(destination, name, limits);
  } catch (const MarkerError& error) {
    throw MarkerError{name, error.version()};
  } catch (const FileError& error) {
    if (isOfNoFile(error)) throw;
    return std::nullopt;
  }
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

Marker load(const Folder& destination, Limits limits) {
  Marker marker;
  for (const std::string& name : destination.names()) {
    if (!isRecordName(name)) continue;
    if (auto record = loadRecord(destination, name, limits)) {
      marker.records.push_back(*std::move(record));
    } else {
      marker.damaged.push_back(name);
    }
  }
  // A phone may have a file of such a name, too.
  std::erase_if(marker.damaged, [&](const std::string& name) { return names(marker, name); });
  return marker;
}

void save(Folder& destination, const PhoneRecord& record, bool wasRead) {
  const std::string name = fileName(record.phoneHash);
  if (destination.status(name)) {
    Limits limits;
    const auto earlier = wasRead ? loadRecord(destination, name, limits) : std::nullopt;
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
