#pragma once

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/json/JsonValue.h"
#include "foundation/json/JsonWriter.h"
#include "naming/NameTemplate.h"

namespace tavrix {

/// Why decoding a template from JSON failed, and at which position.
class NameTemplateError : public std::exception {
 public:
  enum class Kind {
    notJson,          ///< not JSON, or not UTF-8, at `position`
    tooLarge,         ///< nested too deep, or a value too long, at `position` or in the token
    tooManyTokens,    ///< more than NameTemplateCoding::maxTokens
    missingKey,       ///< `key` is missing
    wrongType,        ///< the value of `key` has another type
    keyCount,         ///< a token has no key, or more than one
    unknownToken,     ///< there is no kind of token named `key`
    unknownStyle,     ///< `value` is not a style for `key` of the token
    unknownLanguage,  ///< `value` is not a language
  };

  struct Details {
    std::optional<std::size_t> tokenIndex = std::nullopt;  ///< from 0, if the error is in a token
    /// "tokens", "language", a kind of token, "_0" or "_1"; empty for the whole value
    std::string key{};
    std::string value{};                                  ///< the text found under `key`
    std::optional<JsonPosition> position = std::nullopt;  ///< set if reading the JSON text failed

    friend bool operator==(const Details&, const Details&) = default;
  };

  NameTemplateError(Kind kind, Details details) : kind_(kind), details_(std::move(details)) {}
  Kind kind() const { return kind_; }
  const Details& details() const { return details_; }
  /// Returns "Invalid number of keys found, expected one." for `keyCount`, otherwise the name of
  /// the class.
  const char* what() const noexcept override;

 private:
  Kind kind_;
  Details details_;
};

/// The persisted form of a template, described in docs/template.md.
namespace NameTemplateCoding {

inline constexpr std::size_t maxTokens = 1000;
/// The greatest length of a literal, in bytes of UTF-8. Small enough that the written form can be
/// read again, however its characters are escaped.
inline constexpr std::size_t maxLiteralBytes = 65536;

/// Decodes a template. Ignores unknown keys in the template and in a payload, but not in a token.
/// Throws NameTemplateError on any error; a template is never decoded in part.
NameTemplate decode(const JsonValue& json);
/// As decode(), from a JSON text within the default JsonLimits. Throws NameTemplateError, never
/// JsonError.
NameTemplate decodeText(std::string_view text);

/// Writes one JSON object, for instance as the value of a key. Ill-formed UTF-8 in literals becomes
/// U+FFFD. A template that exceeds the limits above is written, but cannot be decoded.
void encode(const NameTemplate& nameTemplate, JsonWriter& writer);
/// Returns a whole document: pretty-printed with sorted keys and a line break at the end.
std::string encodeText(const NameTemplate& nameTemplate);

}  // namespace NameTemplateCoding

}  // namespace tavrix
