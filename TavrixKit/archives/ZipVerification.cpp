#include "archives/ZipVerification.h"

#include <zip.h>

#include <memory>
#include <utility>

namespace tavrix {
namespace {

constexpr std::size_t bufferBytes = std::size_t{1} << 20U;

// The archive is never modified, so there is nothing to save.
using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using Content = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

Archive open(FileDescriptor file) {
  int code = 0;
  Archive archive{::zip_fdopen(file.number(), ZIP_CHECKCONS, &code), ::zip_discard};
  if (archive == nullptr) throw ZipError{ZipError::Kind::unreadable, {}};
  // The library has closed it.
  file.release();
  return archive;
}

/// Returns true if the directory describes the entry as it was added.
bool isListed(zip_t* archive, zip_uint64_t index, const ZippedEntry& zipped) {
  constexpr zip_uint64_t needed =
      ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD | ZIP_STAT_COMP_SIZE;
  zip_stat_t status;
  if (::zip_stat_index(archive, index, ZIP_FL_ENC_RAW, &status) != 0) return false;
  return (status.valid & needed) == needed && status.name == zipped.entry.name &&
         status.size == zipped.entry.size && status.comp_size == zipped.entry.size &&
         status.crc == zipped.crc && status.comp_method == ZIP_CM_STORE;
}

/// Reads an entry to its end, where the library checks the CRC-32 of the bytes.
void readEntry(zip_t* archive, zip_uint64_t index, const ZippedEntry& zipped, char* buffer,
               const ZipVerification::Received& received) {
  const std::string& name = zipped.entry.name;
  const Content content{::zip_fopen_index(archive, index, 0), ::zip_fclose};
  if (content == nullptr) throw ZipError{ZipError::Kind::unreadable, name};
  std::uint64_t total = 0;
  for (;;) {
    const zip_int64_t count = ::zip_fread(content.get(), buffer, bufferBytes);
    if (count < 0) throw ZipError{ZipError::Kind::mismatch, name};
    if (count == 0) break;
    total += static_cast<std::uint64_t>(count);
    if (received) received(static_cast<std::uint64_t>(count));
  }
  if (total != zipped.entry.size) throw ZipError{ZipError::Kind::mismatch, name};
}

}  // namespace

void ZipVerification::verify(FileDescriptor file, const std::deque<ZippedEntry>& entries,
                             const Received& received) {
  const Archive archive = open(std::move(file));
  if (::zip_get_num_entries(archive.get(), 0) != static_cast<zip_int64_t>(entries.size()))
    throw ZipError{ZipError::Kind::mismatch, {}};
  const std::unique_ptr<char[]> buffer{new char[bufferBytes]};
  for (zip_uint64_t i = 0; i < entries.size(); ++i) {
    if (!isListed(archive.get(), i, entries[i]))
      throw ZipError{ZipError::Kind::mismatch, entries[i].entry.name};
    readEntry(archive.get(), i, entries[i], buffer.get(), received);
  }
}

}  // namespace tavrix
