#include "interface/options/NumberSetting.h"

#include <fmt/format.h>

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "settings/SettingKeys.h"

namespace tavrix::window {
namespace {

/// Returns the number without superfluous digits: "4", "4,5", "0,25".
std::string numberIn(Language language, double value) {
  std::string text = fmt::format("{:.2f}", value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  if (language == Language::russian) std::replace(text.begin(), text.end(), '.', ',');
  return text;
}

/// Returns the nearest value of a key's form.
double nearest(SettingForm form, double value) {
  if (!(value >= 0)) return 0;
  if (form == SettingForm::fraction) return std::min(value, 1.0);
  if (form == SettingForm::count) return std::round(std::min(value, 1.0 * largestSettingCount));
  return value;
}

/// Returns how many of the shown units make one unit of the setting.
double scaleOf(NumberSetting::Unit unit) {
  constexpr double percent = 100;
  return unit == NumberSetting::Unit::percent ? percent : 1;
}

}  // namespace

double NumberSetting::value() const { return *port_.value(key_).asNumber() * scaleOf(shape_.unit); }

double NumberSetting::initialValue() const {
  return *SettingsPort::initialValue(key_).asNumber() * scaleOf(shape_.unit);
}

void NumberSetting::setValue(double value) {
  const double accepted = nearest(*settingForm(key_), value / scaleOf(shape_.unit));
  port_.set(key_, fmt::format("{}", accepted));
  Q_EMIT changed();  // a field that shows a text that was not accepted takes the value again
}

QString NumberSetting::text() const {
  return QString::fromStdString(numberIn(port_.language(), value()));
}

QString NumberSetting::unit() const {
  const auto unitText = [&](const Sentence<>& unit) { return say(port_.language(), unit); };
  switch (shape_.unit) {
    case Unit::hours:
      return QString::fromStdString(unitText(sentences::hoursUnit));
    case Unit::kilometres:
      return QString::fromStdString(unitText(sentences::kilometresUnit));
    case Unit::percent:
      return QString::fromStdString(unitText(sentences::percentUnit));
    case Unit::days:
      break;
  }
  const auto noun =
      nounFor(port_.language(), static_cast<std::uint64_t>(value()), sentences::daysOfTrip);
  return QString::fromUtf8(noun.data(), static_cast<qsizetype>(noun.size()));
}

QString NumberSetting::fullTextOf(double value) const {
  const Language language = port_.language();
  const std::string number = numberIn(language, value);
  switch (shape_.unit) {
    case Unit::hours:
      return QString::fromStdString(say(language, sentences::hours, number));
    case Unit::kilometres:
      return QString::fromStdString(say(language, sentences::kilometres, number));
    case Unit::percent:
      return QString::fromStdString(say(language, sentences::percent, number));
    case Unit::days:
      break;
  }
  return QString::fromStdString(
      counted(language, static_cast<std::uint64_t>(value), sentences::daysOfTrip));
}

QString NumberSetting::fullText() const { return fullTextOf(value()); }

QString NumberSetting::was() const {
  if (value() == initialValue()) return {};
  return QString::fromStdString(
      say(port_.language(), sentences::wasValue, fullTextOf(initialValue()).toStdString()));
}

QString NumberSetting::resetText() const {
  if (value() == initialValue()) return {};
  return QString::fromStdString(
      say(port_.language(), sentences::resetValue, fullTextOf(initialValue()).toStdString()));
}

void NumberSetting::type(const QString& text) {
  static const QRegularExpression number{QStringLiteral("^\\s*(-?[0-9]+(?:[.,][0-9]+)?)")};
  QString digits = number.match(text).captured(1);
  if (digits.isEmpty()) return Q_EMIT changed();
  const double typed = digits.replace(QLatin1Char{','}, QLatin1Char{'.'}).toDouble();
  if (std::isfinite(typed)) setValue(typed);
}

}  // namespace tavrix::window
