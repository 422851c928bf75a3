#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/files/Folder.h"
#include "foundation/json/JsonWriter.h"
#include "history/RecordSummary.h"

namespace tavrix {

/// The summary of a record's file, for use without reading the file again. Valid while the size and
/// modification time of the file match.
struct HistoryIndexEntry {
  enum class State { readable, newerSchema, unreadable };

  std::string fileName;
  std::uint64_t size = 0;  ///< bytes
  Instant modified;
  State state = State::unreadable;
  std::optional<RecordSummary> run;  ///< set if the record is readable

  friend bool operator==(const HistoryIndexEntry&, const HistoryIndexEntry&) = default;
};

/// The index file beside the records, from which runs are listed without reading the records. It
/// has no data of its own; entries that cannot be read are ignored.
namespace HistoryIndex {

inline constexpr const char* fileName = "index.json";

void encode(const std::vector<HistoryIndexEntry>& entries, TextSink& sink);
/// Returns the entries that can be read, in file order.
std::vector<HistoryIndexEntry> decode(ByteReader& source);

}  // namespace HistoryIndex

}  // namespace tavrix
