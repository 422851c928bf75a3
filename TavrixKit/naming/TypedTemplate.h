#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "naming/NameTemplate.h"

namespace tavrix {

/// Why a typed template was rejected, and at which character.
struct TypedTemplateError {
  enum class Kind {
    tooLong,          ///< longer than TypedTemplate::maxBytes, or more than maxTokens tokens
    unclosedBrace,    ///< a "{" without its "}"
    strayBrace,       ///< a "}" without its "{"
    unknownToken,     ///< there is no block named `word`
    unknownStyle,     ///< the block `token` has no style named `word`
    extraWord,        ///< nothing may follow in the block `token` where `word` is
    unknownLanguage,  ///< `word` is not a language
    secondLanguage,   ///< the language is given twice
    notPrintable,     ///< a control character, a line break, or a byte that is not UTF-8
    noBlock,          ///< the text has no block, so it would give every folder the same name
  };

  Kind kind = Kind::noBlock;
  std::uint64_t column = 1;  ///< from 1, in Unicode characters
  std::string token{};
  std::string word{};
  std::vector<std::string> allowed{};  ///< the words that are allowed instead of `word`

  friend bool operator==(const TypedTemplateError&, const TypedTemplateError&) = default;
};

/// The form of a template that a user types, "{year}-{month:nameCap} {city}". Its grammar is in
/// docs/template.md. Pure functions.
namespace TypedTemplate {

inline constexpr std::size_t maxBytes = 65536;

/// Returns the template of a text, or the first fault in it.
std::variant<NameTemplate, TypedTemplateError> parse(std::string_view text);

/// Returns the text of which parse() makes this template, in its shortest form. Returns nullopt if
/// there is no such text: the template has no data block, an empty literal, two literals in a row,
/// a character that cannot be typed, or exceeds the limits.
std::optional<std::string> print(const NameTemplate& nameTemplate);

}  // namespace TypedTemplate

}  // namespace tavrix
