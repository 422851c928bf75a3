#include "cli/printing/SettingDescription.h"

#include "cli/printing/TemplateText.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/SettingMeanings.h"
#include "naming/NameTemplateCoding.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

constexpr const char* noValue = "—";

}  // namespace

std::string allowedValues(Language language, SettingForm form,
                          const std::vector<std::string_view>& choices) {
  const auto text = [&](const Sentence<>& sentence) { return say(language, sentence); };
  switch (form) {
    case SettingForm::boolean:
      return text(sentences::allowedBoolean);
    case SettingForm::choice:
      return joined(choices);
    case SettingForm::atLeastZero:
      return text(sentences::allowedAtLeastZero);
    case SettingForm::fraction:
      return text(sentences::allowedFraction);
    case SettingForm::count:
      return text(sentences::allowedCount);
    case SettingForm::day:
      return text(sentences::allowedDay);
    case SettingForm::timeZone:
      return text(sentences::allowedTimeZone);
    case SettingForm::point:
      return text(sentences::allowedPoint);
    case SettingForm::text:
      return text(sentences::allowedText);
    case SettingForm::nameTemplate:
      return text(sentences::allowedTemplate);
    case SettingForm::textMap:
      return text(sentences::allowedTextMap);
    case SettingForm::places:
      return text(sentences::allowedPlaces);
    case SettingForm::merges:
      return text(sentences::allowedMerges);
  }
  return {};
}

std::string valuesText(Language language, const SettingDescription& setting) {
  return allowedValues(language, setting.form, setting.choices);
}

std::string initialText(Language language, const SettingDescription& setting) {
  const std::string words = say(language, setting.initialInWords);
  return words.empty() ? settingValueText(setting.key, setting.initial) : words;
}

std::string settingValueText(std::string_view key, const std::optional<JsonValue>& value) {
  if (!value) return noValue;
  if (const std::string* const text = value->asString()) {
    return text->empty() ? noValue : printable(*text);
  }
  const JsonValue* const latitude = value->member("latitude");
  const JsonValue* const longitude = value->member("longitude");
  if (key == "homeOverride" && latitude != nullptr && longitude != nullptr) {
    return inOneLine(*latitude) + "," + inOneLine(*longitude);
  }
  if (key == "nameTemplate") return templateText(NameTemplateCoding::decode(*value));
  return printable(inOneLine(*value));
}

std::vector<std::pair<std::string, std::string>> settingRows(Language language,
                                                             const SettingDescription& setting) {
  const auto row = [&](const Sentence<>& label, std::string text) {
    return std::pair{say(language, label), std::move(text)};
  };
  return {row(sentences::rowValues, valuesText(language, setting)),
          row(sentences::rowInitially, initialText(language, setting)),
          row(sentences::rowForOneCall, setting.isForOneCall
                                            ? say(language, sentences::forOneCall, setting.key)
                                            : say(language, sentences::languageForOneCall)),
          row(sentences::rowForAllCalls, setting.isKept
                                             ? say(language, sentences::forAllCalls, setting.key)
                                             : say(language, sentences::notForAllCalls))};
}

}  // namespace tavrix::cli
