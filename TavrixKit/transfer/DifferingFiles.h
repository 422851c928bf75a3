#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// A file of a destination whose size is not the one that its path lets expect. It has the name of
/// a file of the phone, and nothing replaces it.
struct DifferingFile {
  enum class Kind {
    damaged,  ///< shorter than recorded; not copied again
    changed,  ///< longer than recorded; not copied again
    foreign,  ///< without a record, and not of the size on the phone; not copied
    emptied,  ///< empty, and recorded with a size; copied again under a number
  };

  std::string assetID;
  std::string path;  ///< relative to the destination
  Kind kind = Kind::foreign;
  std::uint64_t size = 0;  ///< bytes on disk
  /// Bytes as recorded, or on the phone if nothing is recorded; nullopt if a conversion makes the
  /// size unknown.
  std::optional<std::uint64_t> expectedSize{};

  friend bool operator==(const DifferingFile&, const DifferingFile&) = default;
};

/// Returns the name of the enumerator.
std::string_view textOf(DifferingFile::Kind kind);

/// The numbers of differing files, by kind, and the path of the first of each kind.
struct DifferingCounts {
  struct OfKind {
    std::uint64_t files = 0;
    std::string firstPath;

    friend bool operator==(const OfKind&, const OfKind&) = default;
  };
  std::array<OfKind, 4> kinds{};  ///< in the order of the enumerators

  const OfKind& of(DifferingFile::Kind kind) const {
    return kinds.at(static_cast<std::size_t>(kind));
  }
  /// Returns true if a file stays that is not, or may not be, what the phone has.
  bool leavesAny() const {
    using Kind = DifferingFile::Kind;
    return of(Kind::damaged).files + of(Kind::changed).files + of(Kind::foreign).files > 0;
  }

  friend bool operator==(const DifferingCounts&, const DifferingCounts&) = default;
};
DifferingCounts countsOf(const std::vector<DifferingFile>& files);

}  // namespace tavrix
