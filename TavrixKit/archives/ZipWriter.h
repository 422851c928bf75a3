#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "archives/ZipEntry.h"
#include "archives/ZipError.h"
#include "foundation/StringMap.h"
#include "foundation/TimeZone.h"
#include "foundation/files/Folder.h"

namespace tavrix {

/// Writes a zip archive into a new file, entry by entry. Content is stored uncompressed, because
/// photographs and films are compressed already. Sizes and CRC-32 precede the content, so that
/// programs that read archives sequentially can read them, too. ZIP64 records are used only where
/// the numbers require them. An archive is incomplete without finish().
class ZipWriter {
 public:
  /// Called with the size of each piece that was written. An exception ends add().
  using Received = std::function<void(std::uint64_t bytes)>;

  /// The file must be empty and outlive the writer. Besides the exact times, entries have the local
  /// times of `zone`.
  ZipWriter(WritableFile& file, TimeZone zone);

  /// Adds a file with all its content. Throws ZipError, FileError and the errors of the reader; the
  /// archive is then unusable.
  void add(const ZipEntry& entry, ByteReader& content, const Received& received = {});
  /// Writes the directory. Nothing can be added after it.
  void finish();

  /// Returns the entries added so far, in order.
  const std::deque<ZippedEntry>& entries() const { return entries_; }
  std::uint64_t bytesWritten() const { return offset_; }

  /// Returns the exact size of the finished archive with these entries, in bytes.
  static std::uint64_t archiveBytes(const std::vector<ZipEntry>& entries);

 private:
  static constexpr std::size_t bufferBytes = std::size_t{1} << 20U;

  void write(std::string_view bytes);
  /// Reads until the buffer is full or the content ends. Returns the number of bytes read.
  std::size_t fill(ByteReader& content);

  WritableFile& file_;
  TimeZone zone_;
  std::unique_ptr<char[]> buffer_;
  std::deque<ZippedEntry> entries_;  ///< a deque, so that entries keep their addresses while it
                                     ///< grows
  absl::flat_hash_set<std::string_view> names_;
  std::uint64_t offset_ = 0;
};

}  // namespace tavrix
