#include "runs/ArchivePacker.h"

#include <future>

#include "archives/ZipVerification.h"
#include "archives/ZipWriter.h"
#include "foundation/files/FileError.h"
#include "runs/Staging.h"
#include "transfer/FileDigester.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

constexpr std::uint64_t writebackBytes = std::uint64_t{64} << 20U;

}  // namespace

std::uint64_t ArchiveContent::archiveBytes() const { return ZipWriter::archiveBytes(entries); }

ArchivePacker::ArchivePacker(Folder& destination, TimeZone zone, std::stop_token stop)
    : destination_(destination), zone_(std::move(zone)), stop_(std::move(stop)) {}

void ArchivePacker::checkStop() const {
  if (stop_.stop_requested()) throw Stopped{};
}

DestinationMarker::FileRecord ArchivePacker::pack(const std::string& name,
                                                  const ArchiveContent& content,
                                                  const Processed& processed) {
  const std::string part = partPath(Staging::stagedPath(name));
  DestinationMarker::FileRecord record;
  try {
    pack(name, part, content, record, processed);
  } catch (...) {
    try {
      destination_.removeFile(part);
    } catch (const FileError&) {
      // It is removed with the staging folder.
    }
    throw;
  }
  return record;
}

void ArchivePacker::pack(const std::string& name, const std::string& part,
                         const ArchiveContent& content, DestinationMarker::FileRecord& record,
                         const Processed& processed) {
  const auto step = [&](std::uint64_t bytes) {
    checkStop();
    processed(bytes);
  };
  const auto file = destination_.createFile(part);
  ZipWriter writer{*file, zone_};
  std::uint64_t begun = 0;
  const auto written = [&](std::uint64_t bytes) {
    step(bytes);
    // Lets the disk start writing while packing continues.
    if (writer.bytesWritten() - begun < writebackBytes) return;
    begun = writer.bytesWritten();
    file->startWriteback();
  };
  for (std::size_t i = 0; i < content.entries.size(); ++i) {
    checkStop();
    const auto staged = destination_.openFile(content.paths[i]);
    writer.add(content.entries[i], *staged, written);
  }
  writer.finish();
  // While the data is being written to disk, the digest and the verification read it.
  auto synced = std::async(std::launch::async, [&] { file->sync(); });
  auto digest = std::async(std::launch::async,
                           [&] { return FileDigester{stop_}.digest(destination_, part); });
  ZipVerification::verify(destination_.openDescriptor(part), writer.entries(), step);
  const auto result = digest.get();
  if (!result) throw Stopped{};
  if (result->bytes != writer.bytesWritten()) throw ZipError{ZipError::Kind::mismatch, {}};
  synced.get();
  file->close();
  record.size = result->bytes;
  record.sha256 = result->sha256;
  checkStop();
  for (std::uint64_t number = 1;; ++number) {
    record.path = numberedName(name, number);
    if (destination_.renameWithoutReplacing(part, record.path)) return;
  }
}

}  // namespace tavrix
