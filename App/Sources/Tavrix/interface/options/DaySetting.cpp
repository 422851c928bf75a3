#include "interface/options/DaySetting.h"

namespace tavrix::window {
namespace {

QDate dateOf(CivilDate day) {
  return {static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day()))};
}

CivilDate civil(QDate day) { return std::chrono::year{day.year()} / day.month() / day.day(); }

const QString isoForm = QStringLiteral("yyyy-MM-dd");
const QString russianForm = QStringLiteral("dd.MM.yyyy");

}  // namespace

QString DaySetting::text() const {
  if (!isSet()) return {};
  return dateOf(*value()).toString(port_.language() == Language::russian ? russianForm : isoForm);
}

QDate DaySetting::shown() const { return isSet() ? dateOf(*value()) : QDate::currentDate(); }

bool DaySetting::type(const QString& text) {
  const QString typed = text.trimmed();
  if (typed.isEmpty()) return set({}), true;
  for (const QString& form : {isoForm, russianForm, QStringLiteral("d.M.yyyy")}) {
    const QDate day = QDate::fromString(typed, form);
    if (day.isValid()) return set(day), true;
  }
  return false;
}

void DaySetting::set(QDate day) {
  port_.change([&](Settings& settings) {
    settings.content.*field_ = day.isValid() ? std::optional{civil(day)} : std::nullopt;
  });
  Q_EMIT changed();
}

}  // namespace tavrix::window
