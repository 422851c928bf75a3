#include "transfer/ChecksumMerge.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <tuple>

#include "foundation/files/AtomicFile.h"

namespace tavrix::ChecksumMerge {
namespace {

using ChecksumFile::Entry;
using CopyVerification::CheckedFile;

std::string_view plainPath(std::string_view path) {
  if (path.starts_with("./")) path.remove_prefix(2);
  return path;
}

/// Returns true if a reader of the list stays in its folder. Records may come from any source.
bool isListable(std::string_view path) {
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    if (!isSafePathComponent(path.substr(begin, end - begin))) return false;
    begin = end + 1;
  }
  return true;
}

std::optional<std::string> digestOf(const CheckedFile& file) {
  if (file.expectedSha256) return file.expectedSha256;
  if (file.listedSha256) return file.listedSha256;
  // The present bytes of a changed file prove nothing.
  return file.state == CopyVerification::State::withoutChecksum ? file.sha256 : std::nullopt;
}

}  // namespace

StringMap<std::string> digests(const std::vector<Entry>& list) {
  StringMap<std::string> result;
  result.reserve(list.size());
  for (const Entry& entry : list) result.try_emplace(plainPath(entry.path), entry.sha256);
  return result;
}

std::vector<Entry> merged(const CopyVerification::Report& report,
                          const std::vector<Entry>& earlier) {
  std::vector<Entry> list;
  list.reserve(report.files.size());
  absl::flat_hash_set<std::string_view> recorded;
  for (const CheckedFile& file : report.files) {
    auto digest = digestOf(file);
    if (!digest || !isListable(file.path)) continue;
    recorded.insert(file.path);
    list.push_back({*std::move(digest), file.path});
  }
  for (const Entry& entry : earlier) {
    if (!recorded.contains(plainPath(entry.path))) list.push_back(entry);
  }
  const auto key = [](const Entry& entry) { return std::tie(entry.path, entry.sha256); };
  std::sort(list.begin(), list.end(),
            [&](const Entry& a, const Entry& b) { return key(a) < key(b); });
  list.erase(std::unique(list.begin(), list.end()), list.end());
  return list;
}

}  // namespace tavrix::ChecksumMerge
