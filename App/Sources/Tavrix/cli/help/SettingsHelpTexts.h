#pragma once

#include "cli/HelpTexts.h"

/// The help of the commands on kept settings and templates, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText settings{
    R"(tavrix settings — настройки, которые программа помнит, и какие из них исходные.
tavrix settings set KEY VALUE или KEY=VALUE — запоминает настройку для всех следующих вызовов.
tavrix settings reset KEY — возвращает исходное значение; reset --all — всем настройкам.

Запоминаются:
  skipOptimized eventGapHours eventGapKm splitByDistance placeRadiusKm tripDistanceKm tripMinDays
  tripCityKm tripMaxGapHours homeWindowMonths homeOverride homeOverrideName nameTemplate
  geocodingEnabled nameOverrides mergesByMode
  uiLanguage  язык сообщений, когда нет --lang: ru, en или system

Остальные настройки действуют на один вызов: --set КЛЮЧ=ЗНАЧЕНИЕ; она же на один вызов
перекрывает и то, что запомнено.

Примеры:
  tavrix settings
  tavrix settings set eventGapHours 6
  tavrix settings set homeOverride=55.75,37.62
  tavrix settings set homeOverrideName=Дача
  tavrix settings reset eventGapHours
)",
    R"(tavrix settings — the settings that the program keeps, and which of them are the initial ones.
tavrix settings set KEY VALUE or KEY=VALUE — keeps a setting for all calls from now on.
tavrix settings reset KEY — back to the initial value; reset --all does so for all settings.

Kept are:
  skipOptimized eventGapHours eventGapKm splitByDistance placeRadiusKm tripDistanceKm tripMinDays
  tripCityKm tripMaxGapHours homeWindowMonths homeOverride homeOverrideName nameTemplate
  geocodingEnabled nameOverrides mergesByMode
  uiLanguage  language of what people read where there is no --lang: ru, en or system

All other settings count for one call: --set KEY=VALUE, which for one call also overrides what is
kept.

Examples:
  tavrix settings
  tavrix settings set eventGapHours 6
  tavrix settings set homeOverride=41.9,12.5
  tavrix settings set homeOverrideName=Cottage
  tavrix settings reset eventGapHours
)"};

inline constexpr HelpText presets{
    R"(tavrix presets — шаблоны имён папок: готовые и сохранённые.
tavrix presets save NAME JSON — сохраняет шаблон; прежний с тем же названием заменяется.
tavrix presets delete NAME — удаляет сохранённый шаблон.

Чтобы папки назывались по шаблону: tavrix settings set nameTemplate JSON.

Примеры:
  tavrix presets
  tavrix presets save 'Год и город' \
    '{"tokens":[{"year":{"_0":"full"}},{"literal":{"_0":" "}},{"city":{"_0":"asIs"}}],"language":"russian"}'
  tavrix presets delete 'Год и город'
)",
    R"(tavrix presets — templates of folder names: those built in and those saved.
tavrix presets save NAME JSON — saves a template; an earlier one of the same name is replaced.
tavrix presets delete NAME — deletes a saved template.

To have folders named by a template: tavrix settings set nameTemplate JSON.

Examples:
  tavrix presets
  tavrix presets save 'Year and city' \
    '{"tokens":[{"year":{"_0":"full"}},{"literal":{"_0":" "}},{"city":{"_0":"asIs"}}],"language":"english"}'
  tavrix presets delete 'Year and city'
)"};

}  // namespace tavrix::cli::help
