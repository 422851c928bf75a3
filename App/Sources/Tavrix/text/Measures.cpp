#include "text/Measures.h"

#include <array>
#include <cmath>

namespace tavrix {
namespace {

struct TimeUnit {
  std::int64_t milliseconds;
  std::string_view russian;
  std::string_view english;
};

constexpr std::array<TimeUnit, 5> timeUnits{{{86'400'000, "дн.", "d"},
                                             {3'600'000, "ч", "h"},
                                             {60'000, "мин", "min"},
                                             {1'000, "с", "s"},
                                             {1, "мс", "ms"}}};
constexpr std::size_t days = 0;
constexpr std::size_t hours = 1;
constexpr std::size_t minutes = 2;
constexpr std::int64_t longestInHours = 100;

constexpr int mostDecimals = 9;
/// Up to this value a whole double is printed digit by digit.
constexpr double largestPlain = 1e15;

/// Converts a number printed by fmt to the notation of a language.
std::string localised(Language language, const std::string& number) {
  const auto point = number.find('.');
  const std::string whole = number.substr(0, point);
  if (number.find('e') != std::string::npos || whole.size() > 15) return number;
  std::string text = numberText(language, std::stoull(whole));
  if (point == std::string::npos) return text;
  return text + (language == Language::russian ? "," : ".") + number.substr(point + 1);
}

std::string withUnit(Language language, const std::string& number, std::string_view russian,
                     std::string_view english) {
  return fmt::format("{}\u00A0{}", localised(language, number),
                     language == Language::russian ? russian : english);
}

/// Returns a setting as the user typed it.
std::string plain(double number) {
  const bool isWhole = number < largestPlain && number == std::floor(number);
  return isWhole ? fmt::format("{:.0f}", number) : fmt::format("{}", number);
}

/// Uses the fewest decimals that keep the value on its side of the limit.
std::string roundedApart(double value, double limit) {
  for (int decimals = 0; decimals < mostDecimals; ++decimals) {
    const std::string text = fmt::format("{:.{}f}", value, decimals);
    const double rounded = std::stod(text);
    if ((rounded < limit) == (value < limit) && (rounded > limit) == (value > limit)) return text;
  }
  return fmt::format("{}", value);
}

std::string timeText(Language language, std::int64_t milliseconds, std::size_t firstUnit) {
  std::string text;
  for (std::size_t unit = firstUnit; unit < timeUnits.size(); ++unit) {
    const auto& [length, russian, english] = timeUnits[unit];
    const std::int64_t count = milliseconds / length;
    milliseconds %= length;
    if (count == 0) continue;
    if (!text.empty()) text += ' ';
    text += withUnit(language, std::to_string(count), russian, english);
  }
  return text.empty() ? withUnit(language, "0", timeUnits[minutes].russian, "min") : text;
}

std::string hoursText(Language language, double count) {
  const double milliseconds = count * static_cast<double>(timeUnits[hours].milliseconds);
  if (milliseconds >= largestPlain || milliseconds != std::floor(milliseconds)) {
    return withUnit(language, plain(count), timeUnits[hours].russian, timeUnits[hours].english);
  }
  return timeText(language, static_cast<std::int64_t>(milliseconds), hours);
}

/// Returns a time in two units, or in as many more as needed to show that it exceeds `limitHours`.
std::string timeApart(Language language, std::int64_t milliseconds, double limitHours) {
  const bool isLong = milliseconds >= longestInHours * timeUnits[hours].milliseconds;
  const std::size_t first = isLong ? days : hours;
  std::size_t last = first + 1;
  const auto cutAt = [&](std::size_t unit) {
    return milliseconds - milliseconds % timeUnits[unit].milliseconds;
  };
  const auto isLonger = [&](std::int64_t time) {
    return static_cast<double>(time) >
           limitHours * static_cast<double>(timeUnits[hours].milliseconds);
  };
  while (last + 1 < timeUnits.size() && !isLonger(cutAt(last))) ++last;
  return timeText(language, cutAt(last), first);
}

}  // namespace

Compared comparedDistances(Language language, double km, double limitKm) {
  return {withUnit(language, roundedApart(km, limitKm), "км", "km"),
          withUnit(language, plain(limitKm), "км", "km")};
}

Compared comparedPauses(Language language, Instant::duration gap, double limitHours) {
  return {timeApart(language, gap.count(), limitHours), hoursText(language, limitHours)};
}

std::string durationText(std::chrono::seconds duration) {
  const std::chrono::hh_mm_ss time{duration};
  if (time.hours().count() == 0) {
    return fmt::format("{}:{:02}", time.minutes().count(), time.seconds().count());
  }
  return fmt::format("{}:{:02}:{:02}", time.hours().count(), time.minutes().count(),
                     time.seconds().count());
}

std::string durationInUnits(Language language, std::chrono::seconds duration) {
  return timeText(language, std::chrono::milliseconds{duration}.count(), hours);
}

std::string distanceText(Language language, double km) {
  return withUnit(language, fmt::format("{:.0f}", km), "км", "km");
}

std::string pointText(const GeoPoint& point) {
  // Adding zero removes the sign of "-0.00" after rounding.
  const auto rounded = [](double degrees) { return std::round(degrees * 100) / 100 + 0.0; };
  return fmt::format("{:.2f}, {:.2f}", rounded(point.latitude), rounded(point.longitude));
}

}  // namespace tavrix
