#pragma once

#include "cli/help/HelpTexts.h"

/// The help of the commands for saved settings and templates, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText settings{
    R"(tavrix settings — настройки, которые программа помнит, и какие из них исходные.
tavrix settings set KEY VALUE или KEY=VALUE — запоминает настройку для всех следующих вызовов.
tavrix settings reset KEY — возвращает исходное значение; reset --all — всем настройкам.

Запоминаются:
  skipOptimized eventGapHours eventGapKm splitByDistance placeRadiusKm tripDistanceKm tripMinDays
  tripCityKm tripMaxGapHours homeWindowMonths homeOverride homeOverrideName nameTemplate
  geocodingEnabled nameOverrides mergesByMode continueFolders
  uiLanguage  язык сообщений, когда нет --lang: ru, en или system

Остальные настройки действуют на один вызов: --set КЛЮЧ=ЗНАЧЕНИЕ; так же на один вызов можно
заменить и запомненную.

Примеры:
  tavrix settings
  tavrix settings set eventGapHours 6
  tavrix settings set homeOverride=55.75,37.62
  tavrix settings set homeOverrideName=Дача
  tavrix settings set nameTemplate '{year}-{month:nameCap} {city}'
  tavrix settings reset eventGapHours
)",
    R"(tavrix settings — the saved settings, and which of them have their initial values.
tavrix settings set KEY VALUE or KEY=VALUE — saves a setting for all following calls.
tavrix settings reset KEY — restores the initial value; reset --all does so for all settings.

These settings can be saved:
  skipOptimized eventGapHours eventGapKm splitByDistance placeRadiusKm tripDistanceKm tripMinDays
  tripCityKm tripMaxGapHours homeWindowMonths homeOverride homeOverrideName nameTemplate
  geocodingEnabled nameOverrides mergesByMode continueFolders
  uiLanguage  language of the messages without --lang: ru, en or system

All other settings apply to one call: --set KEY=VALUE. It also overrides a saved setting for that
call.

Examples:
  tavrix settings
  tavrix settings set eventGapHours 6
  tavrix settings set homeOverride=41.9,12.5
  tavrix settings set homeOverrideName=Cottage
  tavrix settings set nameTemplate '{year}-{month:nameCap} {city}'
  tavrix settings reset eventGapHours
)"};

inline constexpr HelpText presets{
    R"(tavrix presets — шаблоны имён папок, готовые и сохранённые, и что даёт каждый.
tavrix presets save NAME TEMPLATE — сохраняет шаблон; прежний с тем же
названием заменяется.
tavrix presets delete NAME — удаляет сохранённый шаблон.

TEMPLATE — шаблон вида '{year} {city}', название другого шаблона или JSON;
все блоки показывает tavrix template --help.

Примеры:
  tavrix presets
  tavrix presets save 'Год и город' '{year} {city}'
  tavrix settings set nameTemplate 'Год и город'
  tavrix groups ТЕЛЕФОН --set nameTemplate='Месяц словом'
  tavrix presets delete 'Год и город'
)",
    R"(tavrix presets — templates of folder names, built-in and saved, with examples.
tavrix presets save NAME TEMPLATE — saves a template; an earlier one of the same
name is replaced.
tavrix presets delete NAME — deletes a saved template.

TEMPLATE is a template such as '{year} {city}', the title of another template,
or JSON; tavrix template --help lists all blocks.

Examples:
  tavrix presets
  tavrix presets save 'Year and city' '{year} {city}'
  tavrix settings set nameTemplate 'Year and city'
  tavrix groups PHONE --set nameTemplate='Month in words'
  tavrix presets delete 'Year and city'
)"};

}  // namespace tavrix::cli::help
