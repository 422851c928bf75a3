#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// A pattern for files of the phone. "*" matches any characters, also "/"; "?" matches one
/// character; "[a-z]" matches one character of a set and "[!a-z]" one outside it; "\" makes the
/// next character literal. Letter case is ignored. A pattern without "/" is compared with the last
/// part of an id. A pattern with "/" is compared with the id, and with the id after a "/", so that
/// "*/100APPLE/*" matches "100APPLE/IMG_0001.JPG".
class FileGlob {
 public:
  explicit FileGlob(std::string_view pattern);

  /// Returns the pattern as it was given.
  const std::string& text() const { return text_; }
  bool matches(std::string_view assetID) const;

  friend bool operator==(const FileGlob& a, const FileGlob& b) { return a.text_ == b.text_; }

 private:
  struct Range {
    char32_t first;
    char32_t last;
  };
  /// One step of the pattern: any characters, or one character of a set.
  struct Step {
    bool isAnyRun = false;
    bool isOutside = false;  ///< the character must be in none of the ranges
    std::vector<Range> ranges{};

    bool takes(char32_t character) const;
  };

  /// Reads the set that begins at `at`, and sets `at` to the character after it. Returns false, and
  /// changes nothing, if the set does not end.
  static bool readSet(std::u32string_view pattern, std::size_t& at, Step& step);
  bool matchesWhole(std::u32string_view text) const;

  std::string text_;
  bool hasSlash_ = false;
  std::vector<Step> steps_;
};

}  // namespace tavrix
