#include "naming/WholeFolderDates.h"

#include <utility>

namespace tavrix {
namespace {

bool isLiteral(const NameToken& token) {
  return std::holds_alternative<name_token::Literal>(token);
}

bool isLeftOut(const NameToken& token, DateGranularity unit) {
  if (std::holds_alternative<name_token::Day>(token)) return unit != DateGranularity::day;
  return std::holds_alternative<name_token::Month>(token) && unit == DateGranularity::year;
}

}  // namespace

NameTemplate withWholeDates(const NameTemplate& nameTemplate, DateGranularity unit) {
  NameTemplate whole{{}, nameTemplate.language};
  bool hasData = false;
  bool dropsLiteral = false;
  for (const NameToken& token : nameTemplate.tokens) {
    if (isLeftOut(token, unit)) {
      dropsLiteral = !hasData;
      if (hasData && isLiteral(whole.tokens.back())) whole.tokens.pop_back();
    } else if (!isLiteral(token)) {
      hasData = true;
      dropsLiteral = false;
      whole.tokens.push_back(token);
    } else if (!std::exchange(dropsLiteral, false)) {
      whole.tokens.push_back(token);
    }
  }
  return hasData ? whole : nameTemplate;
}

}  // namespace tavrix
