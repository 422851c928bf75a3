#include <algorithm>

#include "cli/call/Nearest.h"
#include "cli/sentences/TemplateSentences.h"
#include "cli/sessions/TemplateFaults.h"
#include "foundation/Text.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

/// Returns the question for the title that the user probably meant, in whatever letter case it was
/// typed. Returns "" if none is near.
std::string perhapsTitle(Language language, const TypedTemplateError& error) {
  std::vector<std::string> folded;
  for (const std::string& title : error.allowed) folded.push_back(caseFolded(title));
  const auto meant = nearest(caseFolded(error.word), folded);
  if (!meant) return {};
  const auto index = std::find(folded.begin(), folded.end(), *meant) - folded.begin();
  return say(language, sentences::perhapsMeantTitle,
             forSentence(error.allowed[static_cast<std::size_t>(index)]));
}

/// Returns the fault without its column.
std::string faultInColumn(Language language, const TypedTemplateError& error) {
  using Kind = TypedTemplateError::Kind;
  const std::string word = forSentence(error.word);
  const auto near = nearest(error.word, error.allowed);
  const std::string meant = near ? say(language, sentences::perhapsMeant, *near) : "";
  const std::string allowed = joined({error.allowed.begin(), error.allowed.end()});
  switch (error.kind) {
    case Kind::tooLong:
      return say(language, sentences::templateTooLarge);
    case Kind::unclosedBrace:
      return say(language, sentences::typedUnclosedBrace);
    case Kind::strayBrace:
      return say(language, sentences::typedStrayBrace);
    case Kind::unknownToken:
      return say(language, sentences::typedUnknownToken, word, meant, allowed);
    case Kind::unknownStyle:
      return say(language, sentences::typedUnknownStyle, error.token, word, meant, allowed);
    case Kind::extraWord:
      return say(language, sentences::typedExtraWord, error.token, word);
    case Kind::unknownLanguage:
      return say(language, sentences::typedUnknownLanguage, word, meant, allowed);
    case Kind::secondLanguage:
      return say(language, sentences::typedSecondLanguage);
    case Kind::notPrintable:
      return say(language, sentences::typedNotPrintable);
    case Kind::noBlock:
      return say(language, sentences::typedNoBlock, perhapsTitle(language, error));
  }
  return {};
}

}  // namespace

std::string typedTemplateFaultText(Language language, const TypedTemplateError& error) {
  using Kind = TypedTemplateError::Kind;
  const std::string fault = faultInColumn(language, error);
  const bool isOfTheWhole = error.kind == Kind::tooLong || error.kind == Kind::noBlock;
  return isOfTheWhole ? fault : say(language, sentences::templateInColumn, error.column, fault);
}

}  // namespace tavrix::cli
