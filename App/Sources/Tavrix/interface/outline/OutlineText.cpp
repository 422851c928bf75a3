#include "interface/outline/OutlineText.h"

#include <fmt/format.h>

#include <QLocale>

#include "interface/words/SidebarSentences.h"

namespace tavrix::window::OutlineText {
namespace {

using Kind = OutlineRow::Kind;

std::string monthName(Language language, int month) {
  const QLocale locale{language == Language::russian ? QLocale::Russian : QLocale::English};
  QString name = locale.standaloneMonthName(month);
  if (!name.isEmpty()) name[0] = name[0].toUpper();
  return name.toStdString();
}

}  // namespace

std::string title(Language language, const OutlineRow& row) {
  switch (row.kind) {
    case Kind::all:
      return say(language, sentences::outlineAll);
    case Kind::years:
      return say(language, sentences::outlineYears);
    case Kind::year:
      return std::to_string(row.year);
    case Kind::month:
      return monthName(language, row.month);
    case Kind::places:
      return say(language, sentences::outlinePlaces);
    case Kind::place:
      return row.name;
    case Kind::noPlace:
      return say(language, sentences::outlineNoPlace);
  }
  return {};
}

std::string files(Language language, const OutlineRow& row) {
  return row.isTitle() ? std::string{} : numberText(language, row.files);
}

std::string spoken(Language language, const OutlineRow& row) {
  std::string text = title(language, row);
  if (row.kind == Kind::month) text += fmt::format(" {}", row.year);
  const auto add = [&](const std::string& part) {
    text = say(language, sentences::outlineRow, text, part);
  };
  if (!row.isTitle()) add(counted(language, row.files, sentences::outlineFiles));
  if (row.canExpand()) {
    add(say(language, row.isExpanded ? sentences::outlineOpen : sentences::outlineClosed));
  }
  return text;
}

}  // namespace tavrix::window::OutlineText
