#include "media/FileGlob.h"

#include <algorithm>

#include "foundation/Text.h"

namespace tavrix {
namespace {

/// Returns the characters of a text without their letter case.
std::u32string folded(std::string_view text) {
  const std::string valid = caseFolded(replacingInvalidUtf8(text));
  std::u32string characters;
  characters.reserve(valid.size());
  for (std::size_t at = 0; at < valid.size();) {
    const auto lead = static_cast<unsigned char>(valid[at++]);
    const int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    char32_t character = more == 0 ? lead : lead & (0x3FU >> static_cast<unsigned>(more));
    for (int i = 0; i < more; ++i) {
      character = (character << 6U) | (static_cast<unsigned char>(valid[at++]) & 0x3FU);
    }
    characters += character;
  }
  return characters;
}

}  // namespace

bool FileGlob::Step::takes(char32_t character) const {
  const bool isInside = std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
    return range.first <= character && character <= range.last;
  });
  return isInside != isOutside;
}

bool FileGlob::readSet(std::u32string_view pattern, std::size_t& at, Step& step) {
  std::size_t next = at + 1;
  Step read;
  read.isOutside = next < pattern.size() && (pattern[next] == U'!' || pattern[next] == U'^');
  if (read.isOutside) ++next;
  // A "]" that comes first is a character of the set.
  for (std::size_t first = next; next < pattern.size(); ++next) {
    if (pattern[next] == U']' && next > first) {
      at = next + 1;
      step = std::move(read);
      return true;
    }
    Range range{pattern[next], pattern[next]};
    if (next + 2 < pattern.size() && pattern[next + 1] == U'-' && pattern[next + 2] != U']') {
      range.last = pattern[next += 2];
    }
    read.ranges.push_back(range);
  }
  return false;
}

FileGlob::FileGlob(std::string_view pattern)
    : text_(pattern), hasSlash_(pattern.find('/') != std::string_view::npos) {
  const std::u32string characters = folded(pattern);
  for (std::size_t at = 0; at < characters.size();) {
    Step& step = steps_.emplace_back();
    if (characters[at] == U'[' && readSet(characters, at, step)) continue;
    if (characters[at] == U'*') {
      step.isAnyRun = true;
    } else if (characters[at] == U'?') {
      step.isOutside = true;
    } else {
      if (characters[at] == U'\\' && at + 1 < characters.size()) ++at;
      step.ranges.push_back({characters[at], characters[at]});
    }
    ++at;
  }
}

bool FileGlob::matches(std::string_view assetID) const {
  if (!hasSlash_) assetID.remove_prefix(assetID.rfind('/') + 1);
  const std::u32string text = folded(assetID);
  return matchesWhole(text) || (hasSlash_ && matchesWhole(U"/" + text));
}

bool FileGlob::matchesWhole(std::u32string_view text) const {
  std::size_t step = 0;
  std::size_t at = 0;
  // If a later step fails, the last "*" takes one more character.
  std::size_t afterRun = 0;
  std::size_t runEnd = 0;
  bool hasRun = false;
  while (at < text.size() || step < steps_.size()) {
    if (step < steps_.size() && steps_[step].isAnyRun) {
      afterRun = ++step;
      runEnd = at;
      hasRun = true;
    } else if (step < steps_.size() && at < text.size() && steps_[step].takes(text[at])) {
      ++step;
      ++at;
    } else if (hasRun && runEnd < text.size()) {
      step = afterRun;
      at = ++runEnd;
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace tavrix
