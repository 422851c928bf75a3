// Reads arbitrary bytes as the record of a run and as the index of all records. If they decode,
// writing and reading must give the same, in full and for a list; otherwise RecordError must be
// thrown.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "foundation/json/TextReader.h"
#include "history/HistoryIndex.h"
#include "history/TransferRecordCoding.h"

using namespace tavrix;

namespace {

void readRecord(std::string_view text) {
  try {
    const TransferRecord record = TransferRecordCoding::decode(text);
    if (TransferRecordCoding::decode(TransferRecordCoding::encode(record)) != record) std::abort();
    TextReader again{text};
    if (summaryOf(TransferRecordCoding::decodeWithoutFolders(again)) != summaryOf(record)) {
      std::abort();
    }
    const auto shots = totalsOf(record.folders);
    if (shots.shots < shots.onMac + shots.failed) std::abort();
  } catch (const TransferRecord::RecordError& error) {
    using Kind = TransferRecord::RecordError::Kind;
    if (error.kind() == Kind::newerSchema &&
        error.version() <= TransferRecord::currentSchemaVersion) {
      std::abort();
    }
  }
}

void readIndex(std::string_view text) {
  TextReader source{text};
  const auto entries = HistoryIndex::decode(source);
  StringSink sink;
  HistoryIndex::encode(entries, sink);
  TextReader written{sink.text()};
  if (HistoryIndex::decode(written) != entries) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  readRecord(text);
  readIndex(text);
  return 0;
}
