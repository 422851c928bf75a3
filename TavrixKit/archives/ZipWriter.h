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

/// Writes a zip archive into a new file, entry after entry. Content is stored as it is: photographs
/// and films are compressed already. Sizes and CRC-32 stand before the content, so that programs
/// that read archives from their beginning understand them, too; the ZIP64 forms are used where the
/// numbers ask for them. An archive without finish() is none.
class ZipWriter {
 public:
  /// Told of each piece that was written; what it throws ends the adding.
  using Received = std::function<void(std::uint64_t bytes)>;

  /// The file must be empty and outlive the writer. Besides the exact times, entries bear those of
  /// a wall clock, which is that of `zone`.
  ZipWriter(WritableFile& file, TimeZone zone);

  /// Adds a file with all its content. Throws ZipError, FileError and what the reader throws; the
  /// archive is of no use then.
  void add(const ZipEntry& entry, ByteReader& content, const Received& received = {});
  /// Writes the directory. Nothing can be added after it.
  void finish();

  /// What was added, in order.
  const std::deque<ZippedEntry>& entries() const { return entries_; }
  std::uint64_t bytesWritten() const { return offset_; }

  /// The exact size of the finished archive with these entries.
  static std::uint64_t archiveBytes(const std::vector<ZipEntry>& entries);

 private:
  static constexpr std::size_t bufferBytes = std::size_t{1} << 20U;

  void write(std::string_view bytes);
  /// Reads until the buffer is full or the content ends; gives how many bytes there are.
  std::size_t fill(ByteReader& content);

  WritableFile& file_;
  TimeZone zone_;
  std::unique_ptr<char[]> buffer_;
  std::deque<ZippedEntry> entries_;  ///< stays where it is while it grows
  absl::flat_hash_set<std::string_view> names_;
  std::uint64_t offset_ = 0;
};

}  // namespace tavrix
