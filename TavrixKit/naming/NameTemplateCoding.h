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

/// Why a JSON text or value is no template, and where.
class NameTemplateError : public std::exception {
 public:
  enum class Kind {
    notJson,          ///< no JSON, or no UTF-8; `position` says where
    tooLarge,         ///< nested too deep, or a value too long; `position` or the token says where
    tooManyTokens,    ///< more than NameTemplateCoding::maxTokens
    missingKey,       ///< `key` is not there
    wrongType,        ///< the value of `key` is of another type
    keyCount,         ///< a token has no key, or more than one
    unknownToken,     ///< no kind of token is called `key`
    unknownStyle,     ///< `value` is no style that `key` of the token takes
    unknownLanguage,  ///< `value` is no language
  };

  struct Details {
    std::optional<std::size_t> tokenIndex = std::nullopt;  ///< from 0, when the fault is in a token
    /// "tokens", "language", a kind of token, "_0" or "_1"; empty for the whole
    std::string key{};
    std::string value{};                                  ///< the text found under `key`
    std::optional<JsonPosition> position = std::nullopt;  ///< known for faults of the text as JSON

    friend bool operator==(const Details&, const Details&) = default;
  };

  NameTemplateError(Kind kind, Details details) : kind_(kind), details_(std::move(details)) {}
  Kind kind() const { return kind_; }
  const Details& details() const { return details_; }
  /// For `keyCount` "Invalid number of keys found, expected one."; else the class's name.
  const char* what() const noexcept override;

 private:
  Kind kind_;
  Details details_;
};

/// The persisted form of a template, described in docs/template.md.
namespace NameTemplateCoding {

inline constexpr std::size_t maxTokens = 1000;
/// Of a literal, in bytes of UTF-8: so few that however its characters are escaped, what is written
/// can be read again.
inline constexpr std::size_t maxLiteralBytes = 65536;

/// Keys that the form does not know are passed over in the template and in a payload, not in a
/// token. Throws NameTemplateError; nothing is taken from a template that has any fault.
NameTemplate decode(const JsonValue& json);
/// Reads the text within the default JsonLimits. Throws NameTemplateError, never JsonError.
NameTemplate decodeText(std::string_view text);

/// Writes one JSON object, for instance as the value of a key. Ill-formed UTF-8 in literals becomes
/// U+FFFD; a template beyond the bounds above is written, but does not decode.
void encode(const NameTemplate& nameTemplate, JsonWriter& writer);
/// A whole document: pretty-printed with sorted keys and a line break at its end.
std::string encodeText(const NameTemplate& nameTemplate);

}  // namespace NameTemplateCoding

}  // namespace tavrix
