#include "history/TransferRecord.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tavrix {
namespace {

using Record = TransferRecord;

/// The names of an enumeration's enumerators, in their order.
template <typename Enumeration>
constexpr std::array<std::string_view, 0> names{};
template <>
constexpr std::array<std::string_view, 4> names<Record::Status>{
    "completed", "completedWithFailures", "cancelled", "interrupted"};
template <>
constexpr std::array<std::string_view, 3> names<Record::ShotKind>{"photo", "livePhoto", "video"};
template <>
constexpr std::array<std::string_view, 4> names<Record::Role>{"original", "edit", "liveVideo",
                                                              "sidecar"};
template <>
constexpr std::array<std::string_view, 5> names<Record::PartState>{"onMac", "alreadyThere",
                                                                   "failed", "off", "notReached"};
template <>
constexpr std::array<std::string_view, 5> names<Record::Outcome>{"onMac", "alreadyThere", "failed",
                                                                 "optimized", "notReached"};
template <>
constexpr std::array<std::string_view, 5> names<Record::OutcomeFilter>{
    "all", "onMac", "alreadyThere", "failed", "optimized"};

template <typename Enumeration>
std::string_view nameOf(Enumeration value) {
  return names<Enumeration>.at(static_cast<std::size_t>(value));
}

}  // namespace

std::string_view textOf(Record::Status status) { return nameOf(status); }
std::string_view textOf(Record::ShotKind kind) { return nameOf(kind); }
std::string_view textOf(Record::Role role) { return nameOf(role); }
std::string_view textOf(Record::PartState state) { return nameOf(state); }
std::string_view textOf(Record::Outcome outcome) { return nameOf(outcome); }
std::string_view textOf(Record::OutcomeFilter filter) { return nameOf(filter); }

template <typename Enumeration>
std::optional<Enumeration> caseOf(std::string_view text) {
  const auto& all = names<Enumeration>;
  const auto found = std::find(all.begin(), all.end(), text);
  if (found == all.end()) return std::nullopt;
  return static_cast<Enumeration>(found - all.begin());
}
template std::optional<Record::Status> caseOf(std::string_view text);
template std::optional<Record::ShotKind> caseOf(std::string_view text);
template std::optional<Record::Role> caseOf(std::string_view text);
template std::optional<Record::PartState> caseOf(std::string_view text);
template std::optional<Record::Outcome> caseOf(std::string_view text);
template std::optional<Record::OutcomeFilter> caseOf(std::string_view text);

Record::Totals totalsOf(const std::vector<Record::Folder>& folders) {
  Record::Totals totals;
  for (const Record::Folder& folder : folders) {
    totals.shots += folder.shots.size();
    for (const Record::Shot& shot : folder.shots) {
      if (shot.outcome == Record::Outcome::onMac) ++totals.onMac;
      if (shot.outcome == Record::Outcome::alreadyThere) ++totals.alreadyThere;
      if (shot.outcome == Record::Outcome::failed) ++totals.failed;
      if (shot.outcome == Record::Outcome::optimized) ++totals.optimized;
      for (const Record::File& file : shot.files) {
        if (file.state == Record::PartState::onMac) totals.bytesWritten += file.bytes;
      }
    }
  }
  return totals;
}

bool matches(Record::OutcomeFilter filter, Record::Outcome outcome) {
  return filter == Record::OutcomeFilter::all || textOf(filter) == textOf(outcome);
}

TransferRecord filtered(TransferRecord record, Record::OutcomeFilter filter) {
  for (Record::Folder& folder : record.folders) {
    std::erase_if(folder.shots,
                  [&](const Record::Shot& shot) { return !matches(filter, shot.outcome); });
  }
  if (filter != Record::OutcomeFilter::all) {
    std::erase_if(record.folders, [](const Record::Folder& each) { return each.shots.empty(); });
  }
  return record;
}

}  // namespace tavrix
