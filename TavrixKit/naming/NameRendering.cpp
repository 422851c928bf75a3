#include "naming/NameRendering.h"

#include <fmt/compile.h>
#include <fmt/format.h>

#include "foundation/DateFormatterCache.h"
#include "foundation/Text.h"
#include "naming/FolderName.h"

namespace tavrix::NameRendering {
namespace {

std::string inCase(const std::string& text, TextCaseStyle style, const std::string& localeID) {
  switch (style) {
    case TextCaseStyle::asIs:
      return text;
    case TextCaseStyle::lower:
      return lowerCased(text, localeID);
    case TextCaseStyle::upper:
      return upperCased(text, localeID);
    case TextCaseStyle::capital:
      return capitalised(text, localeID);
  }
  return text;
}

std::string inCase(const std::optional<std::string>& text, TextCaseStyle style,
                   const std::string& localeID) {
  return text ? inCase(replacingInvalidUtf8(*text), style, localeID) : std::string{};
}

std::string monthNameWithoutStops(int month, const std::string& localeID, MonthNameStyle style) {
  std::string name = monthName(month, localeID, style);
  std::erase(name, '.');
  return name;
}

std::string monthText(int month, MonthStyle style, const std::string& localeID) {
  const auto name = [&](MonthNameStyle length, TextCaseStyle letterCase) {
    return inCase(monthNameWithoutStops(month, localeID, length), letterCase, localeID);
  };
  switch (style) {
    case MonthStyle::pad2:
      return fmt::format(FMT_COMPILE("{:02}"), month);
    case MonthStyle::plain:
      return fmt::format(FMT_COMPILE("{}"), month);
    case MonthStyle::nameLower:
      return name(MonthNameStyle::full, TextCaseStyle::lower);
    case MonthStyle::nameCap:
      return name(MonthNameStyle::full, TextCaseStyle::capital);
    case MonthStyle::abbr:
      return name(MonthNameStyle::abbreviated, TextCaseStyle::asIs);
    case MonthStyle::abbrUpper:
      return name(MonthNameStyle::abbreviated, TextCaseStyle::upper);
  }
  return {};
}

/// Renders each kind of token.
struct TokenText {
  const NameContext& context;
  const std::string& localeID;

  std::string operator()(const name_token::Year& token) const {
    const auto date = firstDay();
    if (!date) return {};
    if (token.style == YearStyle::full) return yearText(*date);
    return fmt::format(FMT_COMPILE("{:02}"), int{date->year()} % 100);
  }
  std::string operator()(const name_token::Month& token) const {
    const auto date = firstDay();
    if (!date) return {};
    return monthText(static_cast<int>(unsigned{date->month()}), token.style, localeID);
  }
  std::string operator()(const name_token::Day& token) const {
    const auto date = firstDay();
    if (!date) return {};
    const unsigned number{date->day()};
    return token.style == DayStyle::pad2 ? fmt::format(FMT_COMPILE("{:02}"), number)
                                         : fmt::format(FMT_COMPILE("{}"), number);
  }
  std::string operator()(const name_token::City& token) const {
    return inCase(context.city, token.letterCase, localeID);
  }
  std::string operator()(const name_token::Country& token) const {
    const auto& text =
        token.style == CountryStyle::name ? context.countryName : context.countryCode;
    return inCase(text, token.letterCase, localeID);
  }
  std::string operator()(const name_token::Event& token) const {
    return inCase(context.eventName, token.letterCase, localeID);
  }
  std::string operator()(const name_token::Literal& token) const {
    return replacingInvalidUtf8(token.text);
  }
  std::string operator()(const name_token::Period&) const {
    const auto first = context.dateStart ? context.dateStart : context.dateEnd;
    const auto last = context.dateEnd ? context.dateEnd : context.dateStart;
    if (!first) return {};
    const auto days = DateFormatterCache::shared().formatter(isoDayKey(context.timeZone));
    const std::string firstText = days->text(*first);
    const std::string lastText = days->text(*last);
    return firstText == lastText ? firstText : firstText + "–" + lastText;
  }

 private:
  std::optional<CivilDate> firstDay() const {
    if (!context.dateStart) return std::nullopt;
    return context.timeZone.dateAt(*context.dateStart);
  }
};

/// Joins the texts of tokens. A separator is kept only if the value after it has a text.
class NameAssembly {
 public:
  void addLiteral(const std::string& text) {
    if (!sawData_) {
      prefix_ += text;
    } else if (hasValue_) {
      pending_ += text;
    }
  }

  void addData(const std::string& text) {
    sawData_ = true;
    if (!text.empty()) {
      hasValue_ = true;
      values_ += pending_ + text;
    }
    pending_.clear();
  }

  bool hasValue() const { return hasValue_; }
  std::string text() const { return prefix_ + values_ + pending_; }

 private:
  std::string prefix_;
  std::string values_;
  std::string pending_;  ///< literals since the last value
  bool sawData_ = false;
  bool hasValue_ = false;
};

}  // namespace

std::string localeID(NameLanguage language, const std::string& systemLocaleID) {
  switch (language) {
    case NameLanguage::system:
      return systemLocaleID;
    case NameLanguage::russian:
      return "ru_RU";
    case NameLanguage::english:
      return "en_US";
  }
  return systemLocaleID;
}

std::string renderToken(const NameToken& token, const NameContext& context,
                        const std::string& localeID) {
  return std::visit(TokenText{context, localeID}, token);
}

std::string render(const NameTemplate& nameTemplate, const NameContext& context,
                   const std::string& systemLocaleID) {
  const std::string locale = localeID(nameTemplate.language, systemLocaleID);
  NameAssembly assembly;
  for (const NameToken& token : nameTemplate.tokens) {
    const std::string text = renderToken(token, context, locale);
    if (std::holds_alternative<name_token::Literal>(token)) {
      assembly.addLiteral(text);
    } else {
      assembly.addData(text);
    }
  }
  return assembly.hasValue() ? FolderName::sanitise(assembly.text())
                             : std::string{FolderName::untitled};
}

}  // namespace tavrix::NameRendering
