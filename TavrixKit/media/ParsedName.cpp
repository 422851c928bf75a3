#include "media/ParsedName.h"

#include <algorithm>
#include <vector>

#include "foundation/Text.h"

namespace tavrix::BundleBuilder {
namespace {

/// The characters of a name as byte ranges: single bytes if the name is ASCII, otherwise grapheme
/// clusters.
class Characters {
 public:
  explicit Characters(std::string_view text) : text_(text) {
    if (!isAscii(text)) clusters_ = graphemeClusters(text);
    isPlain_ = clusters_.empty();
  }

  std::size_t count() const { return isPlain_ ? text_.size() : clusters_.size(); }
  std::string_view at(std::size_t i) const { return isPlain_ ? text_.substr(i, 1) : clusters_[i]; }
  bool is(std::size_t i, char c) const {
    const std::string_view character = at(i);
    return character.size() == 1 && character.front() == c;
  }
  bool isDigit(std::size_t i) const {
    const std::string_view character = at(i);
    return character.size() == 1 && character.front() >= '0' && character.front() <= '9';
  }
  /// Returns the text of the characters from `begin` up to `end`, exclusive.
  std::string_view text(std::size_t begin, std::size_t end) const {
    if (begin >= end) return {};
    const std::string_view last = at(end - 1);
    const char* const first = at(begin).data();
    return {first, static_cast<std::size_t>(last.data() + last.size() - first)};
  }

 private:
  std::string_view text_;
  std::vector<std::string_view> clusters_;
  bool isPlain_ = true;
};

/// Returns the index of the dot before the extension, or the number of characters if there is none.
std::size_t extensionDot(const Characters& name) {
  const std::size_t count = name.count();
  for (std::size_t i = count; i-- > 0;) {
    if (name.is(i, ' ')) return count;
    if (name.is(i, '.')) return i == 0 || i + 1 == count ? count : i;
  }
  return count;
}

/// The parts of a name with a camera pattern. The views point into the name.
struct Pieces {
  std::string_view prefix;
  std::string_view number;
  std::string_view extension;
  bool isEdited;
};

std::optional<Pieces> pieces(std::string_view name) {
  const Characters characters{name};
  const std::size_t stemEnd = extensionDot(characters);
  std::size_t underscore = 0;
  while (underscore < stemEnd && !characters.is(underscore, '_')) ++underscore;
  if (underscore == 0 || underscore + 1 >= stemEnd) return std::nullopt;
  std::size_t digits = underscore + 1;
  const bool isEdited = characters.is(digits, 'E') || characters.is(digits, 'e');
  if (isEdited) ++digits;
  if (digits == stemEnd) return std::nullopt;
  for (std::size_t i = digits; i < stemEnd; ++i) {
    if (!characters.isDigit(i)) return std::nullopt;
  }
  const auto extension = stemEnd < characters.count()
                             ? characters.text(stemEnd + 1, characters.count())
                             : std::string_view{};
  return Pieces{characters.text(0, underscore), characters.text(digits, stemEnd), extension,
                isEdited};
}

}  // namespace

FileNameParts splitFileName(std::string_view name) {
  const Characters characters{name};
  const std::size_t dot = extensionDot(characters);
  if (dot == characters.count()) return {name, {}};
  return {characters.text(0, dot), characters.text(dot + 1, characters.count())};
}

std::optional<ParsedName> parseName(std::string_view name) {
  const auto parts = pieces(name);
  if (!parts) return std::nullopt;
  return ParsedName{upperCased(parts->prefix), std::string{parts->number}, parts->isEdited,
                    lowerCased(parts->extension)};
}

bool isEditedName(std::string_view name) {
  const auto parts = pieces(name);
  return parts && parts->isEdited;
}

}  // namespace tavrix::BundleBuilder
