#include "naming/TypedTemplate.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "foundation/Text.h"
#include "naming/NameStyles.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix::TypedTemplate {
namespace {

using namespace name_token;
using Error = TypedTemplateError;
using Kind = Error::Kind;

constexpr std::string_view languageWord = "language";

/// A word within braces and its offset in the text.
struct Word {
  std::string_view text;
  std::size_t begin;
};

/// Returns the words between colons, without the spaces around each.
std::vector<Word> wordsOf(std::string_view block, std::size_t begin) {
  std::vector<Word> words;
  for (std::size_t at = 0; at <= block.size();) {
    const std::size_t end = std::min(block.find(':', at), block.size());
    std::string_view word = block.substr(at, end - at);
    const std::size_t spaces = std::min(word.find_first_not_of(' '), word.size());
    word.remove_prefix(spaces);
    word = word.substr(0, word.find_last_not_of(' ') + 1);
    words.push_back({word, begin + at + spaces});
    at = end + 1;
  }
  return words;
}

/// The styles of one block. Each may be left out.
class StyleReader {
 public:
  explicit StyleReader(std::span<const Word> words) : words_(words) {}

  /// Returns the style that the next word names. If it names none, returns the initial style and
  /// leaves the word to the next call.
  template <typename Style>
  Style take() {
    if (const auto style = words_.empty() ? std::nullopt : styleOf<Style>(words_.front().text)) {
      words_ = words_.subspan(1);
      allowed_.clear();
      return *style;
    }
    allowed_.insert(allowed_.end(), styleTexts<Style>.begin(), styleTexts<Style>.end());
    return Style{};
  }

  const Word* rest() const { return words_.empty() ? nullptr : &words_.front(); }
  const std::vector<std::string>& allowed() const { return allowed_; }

 private:
  std::span<const Word> words_;
  std::vector<std::string> allowed_;  ///< the styles that the next word may name
};

struct Block {
  std::string_view name;
  NameToken (*make)(StyleReader& styles);
};

constexpr std::array<Block, 7> blocks{{
    {"year", [](StyleReader& s) -> NameToken { return Year{s.take<YearStyle>()}; }},
    {"month", [](StyleReader& s) -> NameToken { return Month{s.take<MonthStyle>()}; }},
    {"day", [](StyleReader& s) -> NameToken { return Day{s.take<DayStyle>()}; }},
    {"period", [](StyleReader&) -> NameToken { return Period{}; }},
    {"city", [](StyleReader& s) -> NameToken { return City{s.take<TextCaseStyle>()}; }},
    {"country",
     [](StyleReader& s) -> NameToken {
       const auto style = s.take<CountryStyle>();
       return Country{style, s.take<TextCaseStyle>()};
     }},
    {"event", [](StyleReader& s) -> NameToken { return Event{s.take<TextCaseStyle>()}; }},
}};

/// Returns the number of the Unicode character at an offset, from 1.
std::uint64_t columnAt(std::string_view text, std::size_t offset) {
  const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
  const std::string_view before = text.substr(0, offset);
  return 1 + static_cast<std::uint64_t>(std::count_if(before.begin(), before.end(), begins));
}

/// Returns the offset of the first character that cannot be typed, or nullopt if there is none.
std::optional<std::size_t> unprintableAt(std::string_view text) {
  const std::string shown = printable(text);
  const auto [at, other] = std::mismatch(text.begin(), text.end(), shown.begin(), shown.end());
  if (at == text.end() && other == shown.end()) return std::nullopt;
  return static_cast<std::size_t>(at - text.begin());
}

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  std::variant<NameTemplate, Error> parse() {
    if (text_.size() > maxBytes) return Error{.kind = Kind::tooLong};
    if (const auto at = unprintableAt(text_)) return errorAt(*at, Kind::notPrintable);
    while (at_ < text_.size()) {
      if (auto error = next()) return *std::move(error);
    }
    endLiteral();
    if (!hasBlock_) return Error{.kind = Kind::noBlock};
    if (result_.tokens.size() > NameTemplateCoding::maxTokens) return Error{.kind = Kind::tooLong};
    return std::move(result_);
  }

 private:
  Error errorAt(std::size_t offset, Kind kind) const {
    return {.kind = kind, .column = columnAt(text_, offset)};
  }
  Error errorAt(const Word& word, Kind kind, std::string_view token,
                std::vector<std::string> allowed) const {
    return {kind, columnAt(text_, word.begin), std::string{token}, std::string{word.text},
            std::move(allowed)};
  }

  /// Reads a run of plain text, a doubled brace or a block.
  std::optional<Error> next() {
    const char c = text_[at_];
    const bool isBrace = c == '{' || c == '}';
    if (isBrace && text_.substr(at_ + 1, 1) == text_.substr(at_, 1)) {
      literal_ += c;
      at_ += 2;
      return std::nullopt;
    }
    if (c == '{') return block();
    if (c == '}') return errorAt(at_, Kind::strayBrace);
    const std::size_t end = std::min(text_.find_first_of("{}", at_), text_.size());
    literal_ += text_.substr(at_, end - at_);
    at_ = end;
    return std::nullopt;
  }

  std::optional<Error> block() {
    const std::size_t end = text_.find_first_of("{}", at_ + 1);
    if (end == std::string_view::npos || text_[end] == '{') {
      return errorAt(at_, Kind::unclosedBrace);
    }
    const auto words = wordsOf(text_.substr(at_ + 1, end - at_ - 1), at_ + 1);
    at_ = end + 1;
    const Word& name = words.front();
    const std::span<const Word> styles = std::span{words}.subspan(1);
    if (name.text == languageWord) return language(name, styles);
    const auto* const known = std::find_if(
        blocks.begin(), blocks.end(), [&](const Block& each) { return each.name == name.text; });
    if (known == blocks.end()) return errorAt(name, Kind::unknownToken, {}, blockNames());
    return addBlock(*known, styles);
  }

  std::optional<Error> addBlock(const Block& known, std::span<const Word> words) {
    StyleReader styles{words};
    NameToken token = known.make(styles);
    if (const Word* const rest = styles.rest()) {
      const Kind kind = styles.allowed().empty() ? Kind::extraWord : Kind::unknownStyle;
      return errorAt(*rest, kind, known.name, styles.allowed());
    }
    endLiteral();
    result_.tokens.push_back(std::move(token));
    hasBlock_ = true;
    return std::nullopt;
  }

  std::optional<Error> language(const Word& name, std::span<const Word> words) {
    const Word given = words.empty() ? Word{{}, name.begin + name.text.size()} : words.front();
    const auto known = styleOf<NameLanguage>(given.text);
    if (!known) {
      const auto& texts = styleTexts<NameLanguage>;
      return errorAt(given, Kind::unknownLanguage, name.text, {texts.begin(), texts.end()});
    }
    if (words.size() > 1) return errorAt(words[1], Kind::extraWord, name.text, {});
    if (hasLanguage_) return errorAt(name, Kind::secondLanguage, name.text, {});
    result_.language = *known;
    hasLanguage_ = true;
    return std::nullopt;
  }

  static std::vector<std::string> blockNames() {
    std::vector<std::string> names;
    for (const Block& each : blocks) names.emplace_back(each.name);
    names.emplace_back(languageWord);
    return names;
  }

  void endLiteral() {
    if (!literal_.empty()) result_.tokens.emplace_back(Literal{std::exchange(literal_, {})});
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string literal_;  ///< the plain text since the last block
  NameTemplate result_;
  bool hasBlock_ = false;
  bool hasLanguage_ = false;
};

/// Returns the part of a block that names a style; the initial style is left out.
template <typename Style>
std::string suffix(Style style) {
  return style == Style{} ? "" : ":" + std::string{styleText(style)};
}

struct TokenPrinter {
  std::string operator()(const Year& token) const { return "{year" + suffix(token.style) + "}"; }
  std::string operator()(const Month& token) const { return "{month" + suffix(token.style) + "}"; }
  std::string operator()(const Day& token) const { return "{day" + suffix(token.style) + "}"; }
  std::string operator()(const City& token) const {
    return "{city" + suffix(token.letterCase) + "}";
  }
  std::string operator()(const Country& token) const {
    return "{country" + suffix(token.style) + suffix(token.letterCase) + "}";
  }
  std::string operator()(const Event& token) const {
    return "{event" + suffix(token.letterCase) + "}";
  }
  std::string operator()(const Period&) const { return "{period}"; }
  std::string operator()(const Literal& token) const {
    std::string text;
    for (const char c : token.text) text.append(c == '{' || c == '}' ? 2 : 1, c);
    return text;
  }
};

bool isTypable(const NameTemplate& nameTemplate) {
  const auto isLiteral = [](const NameToken& token) {
    return std::holds_alternative<Literal>(token);
  };
  const auto isRejected = [&](const NameToken& token) {
    const auto* const literal = std::get_if<Literal>(&token);
    return literal != nullptr && (literal->text.empty() || unprintableAt(literal->text));
  };
  const auto& tokens = nameTemplate.tokens;
  return tokens.size() <= NameTemplateCoding::maxTokens &&
         !std::all_of(tokens.begin(), tokens.end(), isLiteral) &&
         std::none_of(tokens.begin(), tokens.end(), isRejected) &&
         std::adjacent_find(tokens.begin(), tokens.end(), [&](const auto& a, const auto& b) {
           return isLiteral(a) && isLiteral(b);
         }) == tokens.end();
}

}  // namespace

std::variant<NameTemplate, TypedTemplateError> parse(std::string_view text) {
  return Parser{text}.parse();
}

std::optional<std::string> print(const NameTemplate& nameTemplate) {
  if (!isTypable(nameTemplate)) return std::nullopt;
  std::string text;
  if (nameTemplate.language != NameLanguage::system) {
    text.append("{").append(languageWord).append(suffix(nameTemplate.language)).append("}");
  }
  for (const NameToken& token : nameTemplate.tokens) text += std::visit(TokenPrinter{}, token);
  return text.size() <= maxBytes ? std::optional{std::move(text)} : std::nullopt;
}

}  // namespace tavrix::TypedTemplate
