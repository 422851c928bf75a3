#include "naming/NameTemplateCoding.h"

#include <algorithm>
#include <array>

#include "naming/NameStyles.h"

namespace tavrix {
namespace {

using namespace name_token;
using Kind = NameTemplateError::Kind;

/// Reads the members of one JSON object. Its errors have the index of the token that contains the
/// object.
class MemberReader {
 public:
  MemberReader(const JsonValue& json, std::optional<std::size_t> tokenIndex, std::string_view key)
      : json_(json), tokenIndex_(tokenIndex) {
    if (json.asObject() == nullptr) fail(Kind::wrongType, key);
  }

  const JsonValue& value(std::string_view key) const {
    const JsonValue* const found = json_.member(key);
    if (found == nullptr) fail(Kind::missingKey, key);
    return *found;
  }
  const std::string& text(std::string_view key) const {
    const std::string* const found = value(key).asString();
    if (found == nullptr) fail(Kind::wrongType, key);
    return *found;
  }
  const std::string& literal(std::string_view key) const {
    const std::string& found = text(key);
    if (found.size() > NameTemplateCoding::maxLiteralBytes) fail(Kind::tooLarge, key);
    return found;
  }
  template <typename Style>
  Style style(std::string_view key, Kind whenUnknown = Kind::unknownStyle) const {
    const std::string& found = text(key);
    const auto known = styleOf<Style>(found);
    if (!known) fail(whenUnknown, key, found);
    return *known;
  }

  [[noreturn]] void fail(Kind kind, std::string_view key, std::string_view value = {}) const {
    throw NameTemplateError{
        kind, {.tokenIndex = tokenIndex_, .key = std::string{key}, .value = std::string{value}}};
  }

 private:
  const JsonValue& json_;
  std::optional<std::size_t> tokenIndex_;
};

/// The key of a kind of token and the function that reads its payload.
struct TokenCoder {
  std::string_view key;
  NameToken (*decode)(const MemberReader& payload);
};

constexpr std::array<TokenCoder, 8> tokenCoders{{
    {"year", [](const MemberReader& p) -> NameToken { return Year{p.style<YearStyle>("_0")}; }},
    {"month", [](const MemberReader& p) -> NameToken { return Month{p.style<MonthStyle>("_0")}; }},
    {"day", [](const MemberReader& p) -> NameToken { return Day{p.style<DayStyle>("_0")}; }},
    {"city", [](const MemberReader& p) -> NameToken { return City{p.style<TextCaseStyle>("_0")}; }},
    {"country",
     [](const MemberReader& p) -> NameToken {
       return Country{p.style<CountryStyle>("_0"), p.style<TextCaseStyle>("_1")};
     }},
    {"event",
     [](const MemberReader& p) -> NameToken { return Event{p.style<TextCaseStyle>("_0")}; }},
    {"literal", [](const MemberReader& p) -> NameToken { return Literal{p.literal("_0")}; }},
    {"period", [](const MemberReader&) -> NameToken { return Period{}; }},
}};

NameToken decodeToken(const JsonValue& json, std::size_t index) {
  const MemberReader token{json, index, "tokens"};
  const JsonValue::Object& members = *json.asObject();
  if (members.size() != 1) token.fail(Kind::keyCount, {});
  const auto& [key, payload] = *members.begin();
  const auto coder = std::find_if(tokenCoders.begin(), tokenCoders.end(),
                                  [&](const TokenCoder& known) { return known.key == key; });
  if (coder == tokenCoders.end()) token.fail(Kind::unknownToken, key);
  return coder->decode(MemberReader{payload, index, key});
}

/// Writes the payload of each kind of token.
struct PayloadWriter {
  JsonWriter& writer;

  void operator()(const Year& token) const { writer.field("_0", styleText(token.style)); }
  void operator()(const Month& token) const { writer.field("_0", styleText(token.style)); }
  void operator()(const Day& token) const { writer.field("_0", styleText(token.style)); }
  void operator()(const City& token) const { writer.field("_0", styleText(token.letterCase)); }
  void operator()(const Country& token) const {
    writer.field("_0", styleText(token.style)).field("_1", styleText(token.letterCase));
  }
  void operator()(const Event& token) const { writer.field("_0", styleText(token.letterCase)); }
  void operator()(const Literal& token) const { writer.field("_0", token.text); }
  void operator()(const Period&) const {}
};

}  // namespace

const char* NameTemplateError::what() const noexcept {
  return kind_ == Kind::keyCount ? "Invalid number of keys found, expected one."
                                 : "NameTemplateError";
}

NameTemplate NameTemplateCoding::decode(const JsonValue& json) {
  const MemberReader members{json, std::nullopt, {}};
  const JsonValue::Array* const list = members.value("tokens").asArray();
  if (list == nullptr) members.fail(Kind::wrongType, "tokens");
  if (list->size() > maxTokens) members.fail(Kind::tooManyTokens, "tokens");
  NameTemplate result{{}, members.style<NameLanguage>("language", Kind::unknownLanguage)};
  result.tokens.reserve(list->size());
  for (const JsonValue& token : *list) {
    result.tokens.push_back(decodeToken(token, result.tokens.size()));
  }
  return result;
}

NameTemplate NameTemplateCoding::decodeText(std::string_view text) {
  try {
    return decode(parseJson(text));
  } catch (const JsonError& error) {
    const bool isSyntax = error.kind() == JsonError::Kind::syntax;
    throw NameTemplateError{isSyntax ? Kind::notJson : Kind::tooLarge,
                            {.position = error.position()}};
  }
}

void NameTemplateCoding::encode(const NameTemplate& nameTemplate, JsonWriter& writer) {
  writer.beginObject()
      .field("language", styleText(nameTemplate.language))
      .key("tokens")
      .beginArray();
  for (const NameToken& token : nameTemplate.tokens) {
    // The kinds of token have the same order in the variant and in the table.
    writer.beginObject().key(tokenCoders.at(token.index()).key).beginObject();
    std::visit(PayloadWriter{writer}, token);
    writer.endObject().endObject();
  }
  writer.endArray().endObject();
}

std::string NameTemplateCoding::encodeText(const NameTemplate& nameTemplate) {
  StringSink sink;
  JsonWriter writer{sink};
  encode(nameTemplate, writer);
  writer.finish();
  return sink.text();
}

}  // namespace tavrix
