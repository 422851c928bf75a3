#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/files/Folder.h"
#include "foundation/json/JsonWriter.h"
#include "history/RunSummary.h"

namespace tavrix {

/// What is known of a record's file without reading it again: valid while size and time of the file
/// are these.
struct HistoryIndexEntry {
  enum class State { readable, newerSchema, unreadable };

  std::string fileName;
  std::uint64_t size = 0;  ///< bytes
  Instant modified;
  State state = State::unreadable;
  std::optional<RunSummary> run;  ///< of a readable record

  friend bool operator==(const HistoryIndexEntry&, const HistoryIndexEntry&) = default;
};

/// The file beside the records that spares reading them for a list. It holds nothing that the
/// records do not, and what cannot be read of it counts as absent.
namespace HistoryIndex {

inline constexpr const char* fileName = "index.json";

void encode(const std::vector<HistoryIndexEntry>& entries, TextSink& sink);
/// The entries that can be read, in their order.
std::vector<HistoryIndexEntry> decode(ByteReader& source);

}  // namespace HistoryIndex

}  // namespace tavrix
