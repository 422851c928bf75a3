#include "cli/sessions/TemplateFaults.h"

#include <array>

#include "cli/call/ExitStatus.h"
#include "cli/sentences/CliSentences.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

using Details = NameTemplateError::Details;

constexpr std::string_view allowedLanguages = "system, russian, english";
constexpr std::string_view allowedTokens =
    "year, month, day, city, country, event, literal, period";
constexpr std::string_view allowedCases = "asIs, lower, upper, capital";

/// The values that one field of one kind of token may have.
struct AllowedStyles {
  std::string_view token;
  std::string_view field;
  std::string_view values;
};
constexpr std::array<AllowedStyles, 7> allowedStyles{{
    {"year", "_0", "full, short"},
    {"month", "_0", "pad2, plain, nameLower, nameCap, abbr, abbrUpper"},
    {"day", "_0", "pad2, plain"},
    {"city", "_0", allowedCases},
    {"country", "_0", "name, code"},
    {"country", "_1", allowedCases},
    {"event", "_0", allowedCases},
}};

/// Returns a token of a template that was parsed as JSON, or nullptr if it has no such token.
const JsonValue* tokenAt(const JsonValue& json, std::size_t index) {
  const JsonValue* const tokens = json.member("tokens");
  if (tokens == nullptr || tokens->asArray() == nullptr) return nullptr;
  return index < tokens->asArray()->size() ? &tokens->asArray()->at(index) : nullptr;
}

std::string_view stylesFor(const Details& details, std::string_view nameTemplate) {
  const JsonValue json = parseJson(nameTemplate);
  const JsonValue* const token = tokenAt(json, details.tokenIndex.value_or(0));
  if (token == nullptr) return {};
  for (const AllowedStyles& allowed : allowedStyles) {
    if (allowed.field == details.key && token->member(allowed.token) != nullptr) {
      return allowed.values;
    }
  }
  return {};
}

std::string tooLargeText(Language language, const Details& details) {
  return details.tokenIndex ? say(language, sentences::templateTextTooLong)
                            : say(language, sentences::templateTooLarge);
}

/// Returns the fault without the number of its token.
std::string faultInToken(Language language, const NameTemplateError& error,
                         std::string_view nameTemplate) {
  const Details& details = error.details();
  const std::string key = forSentence(details.key);
  const std::string value = forSentence(details.value);
  switch (error.kind()) {
    case NameTemplateError::Kind::notJson: {
      const JsonPosition position = details.position.value_or(JsonPosition{});
      return say(language, sentences::jsonFault, position.line, position.column);
    }
    case NameTemplateError::Kind::tooLarge:
    case NameTemplateError::Kind::tooManyTokens:
      return tooLargeText(language, details);
    case NameTemplateError::Kind::missingKey:
      return say(language, sentences::templateMissingKey, key);
    case NameTemplateError::Kind::wrongType:
      return key.empty() ? say(language, sentences::templateNotObject)
                         : say(language, sentences::templateWrongType, key);
    case NameTemplateError::Kind::keyCount:
      return say(language, sentences::templateKeyCount);
    case NameTemplateError::Kind::unknownToken:
      return say(language, sentences::templateUnknownToken, key, allowedTokens);
    case NameTemplateError::Kind::unknownStyle:
      return say(language, sentences::templateUnknownStyle, key, value,
                 stylesFor(details, nameTemplate));
    case NameTemplateError::Kind::unknownLanguage:
      return say(language, sentences::templateUnknownLanguage, value, allowedLanguages);
  }
  return {};
}

std::string jsonFaultText(Language language, const NameTemplateError& error,
                          std::string_view nameTemplate) {
  const Details& details = error.details();
  if (!details.tokenIndex) return faultInToken(language, error, nameTemplate);
  const std::uint64_t number = *details.tokenIndex + 1;
  // For a fault in a token, the key is "tokens" only if the token itself is not an object.
  if (error.kind() == NameTemplateError::Kind::wrongType && details.key == "tokens") {
    return say(language, sentences::templateTokenNotObject, number);
  }
  return say(language, sentences::templateInToken, number,
             faultInToken(language, error, nameTemplate));
}

}  // namespace

NameTemplate readTemplate(Language language, const std::string& text,
                          const std::vector<SavedPreset>& saved) {
  auto given = givenTemplate(text, saved);
  if (const auto* const fault = std::get_if<TemplateFault>(&given)) {
    failUsage(say(language, sentences::templateRejected, say(language, sentences::theTemplate),
                  templateFaultText(language, *fault, text)));
  }
  return std::get<NameTemplate>(std::move(given));
}

std::string templateFaultText(Language language, const TemplateFault& fault,
                              std::string_view nameTemplate) {
  if (const auto* const typed = std::get_if<TypedTemplateError>(&fault)) {
    return typedTemplateFaultText(language, *typed);
  }
  return jsonFaultText(language, std::get<NameTemplateError>(fault), nameTemplate);
}

}  // namespace tavrix::cli
