#include "archives/ZipWriter.h"

#include <libdeflate.h>

#include "archives/ZipRecords.h"

namespace tavrix {

ZipWriter::ZipWriter(WritableFile& file, TimeZone zone)
    : file_(file), zone_(std::move(zone)), buffer_(new char[bufferBytes]) {}

void ZipWriter::write(std::string_view bytes) {
  file_.append(std::as_bytes(std::span{bytes}));
  offset_ += bytes.size();
}

std::size_t ZipWriter::fill(ByteReader& content) {
  std::size_t filled = 0;
  while (filled < bufferBytes) {
    const std::size_t count = content.read({buffer_.get() + filled, bufferBytes - filled});
    if (count == 0) break;
    filled += count;
  }
  return filled;
}

void ZipWriter::add(const ZipEntry& entry, ByteReader& content, const Received& received) {
  if (!isSafeEntryName(entry.name)) throw ZipError{ZipError::Kind::unsafeName, entry.name};
  if (names_.contains(entry.name)) throw ZipError{ZipError::Kind::duplicateName, entry.name};
  ZippedEntry& zipped = entries_.emplace_back(ZippedEntry{entry, 0, offset_});
  names_.insert(zipped.entry.name);

  const auto digest = [&](std::size_t count) {
    zipped.crc = libdeflate_crc32(zipped.crc, buffer_.get(), count);
  };
  std::size_t count = fill(content);
  digest(count);
  // If the content fits into the buffer, this header is final.
  write(ZipRecords::localHeader(zipped, zone_));
  const std::uint32_t crcOfHeader = zipped.crc;
  std::uint64_t total = 0;
  while (count > 0) {
    total += count;
    if (total > entry.size) break;
    write({buffer_.get(), count});
    if (received) received(count);
    count = fill(content);
    digest(count);
  }
  if (total != entry.size) throw ZipError{ZipError::Kind::contentChanged, entry.name};
  if (zipped.crc == crcOfHeader) return;
  std::byte crc[4];
  for (unsigned i = 0; i < 4; ++i) crc[i] = static_cast<std::byte>(zipped.crc >> (8 * i));
  file_.overwrite(zipped.offset + ZipRecords::crcOffset, crc);
}

void ZipWriter::finish() {
  const std::uint64_t begin = offset_;
  std::string block;
  for (const ZippedEntry& zipped : entries_) {
    block += ZipRecords::directoryEntry(zipped, zone_);
    if (block.size() < bufferBytes) continue;
    write(block);
    block.clear();
  }
  const std::uint64_t bytes = offset_ + block.size() - begin;
  write(block + ZipRecords::directoryEnd(entries_.size(), bytes, begin));
}

std::uint64_t ZipWriter::archiveBytes(const std::vector<ZipEntry>& entries) {
  const TimeZone zone = TimeZone::utc();
  std::uint64_t offset = 0;
  std::uint64_t directory = 0;
  for (const ZipEntry& entry : entries) {
    const ZippedEntry zipped{entry, 0, offset};
    directory += ZipRecords::directoryEntry(zipped, zone).size();
    offset += ZipRecords::localHeader(zipped, zone).size() + entry.size;
  }
  return offset + directory + ZipRecords::directoryEnd(entries.size(), directory, offset).size();
}

}  // namespace tavrix
