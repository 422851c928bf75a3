#pragma once

#include "cli/help/HelpTexts.h"

/// The help of the commands for saved settings and templates, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText settings{
    R"(tavrix settings — настройки, которые программа помнит, и какие из них исходные.
tavrix settings --all — все настройки: что значит каждая, какие значения принимает, какое значение исходное и запоминается ли.
tavrix settings set KEY VALUE или KEY=VALUE — запоминает настройку для всех следующих вызовов.
tavrix settings reset KEY — возвращает исходное значение.
tavrix settings reset --all — возвращает исходные значения всем настройкам.

Остальные настройки действуют на один вызов: --set КЛЮЧ=ЗНАЧЕНИЕ; так же на один вызов можно
заменить и запомненную. Язык сообщений запоминает uiLanguage: ru, en или system.

Примеры:
  tavrix settings
  tavrix settings --all
  tavrix help eventGapHours
  tavrix settings set eventGapHours 6
  tavrix settings set homeOverride=55.75,37.62
  tavrix settings set homeOverrideName=Дача
  tavrix settings set nameTemplate '{year}-{month:nameCap} {city}'
  tavrix settings reset eventGapHours
)",
    R"(tavrix settings — the saved settings, and which of them have their initial values.
tavrix settings --all — every setting: its meaning, its values, the initial one, and whether it can be saved.
tavrix settings set KEY VALUE or KEY=VALUE — saves a setting for all following calls.
tavrix settings reset KEY — restores the initial value.
tavrix settings reset --all — restores the initial values of all settings.

All other settings apply to one call: --set KEY=VALUE. It also overrides a saved setting for that
call. The language of the messages is saved as uiLanguage: ru, en or system.

Examples:
  tavrix settings
  tavrix settings --all
  tavrix help eventGapHours
  tavrix settings set eventGapHours 6
  tavrix settings set homeOverride=41.9,12.5
  tavrix settings set homeOverrideName=Cottage
  tavrix settings set nameTemplate '{year}-{month:nameCap} {city}'
  tavrix settings reset eventGapHours
)"};

inline constexpr HelpText help{
    R"(tavrix help — справка о программе.
tavrix help COMMAND — справка о команде, как tavrix COMMAND --help.
tavrix help KEY — одна настройка: что значит, какие значения принимает и как её задать.

Все настройки сразу: tavrix settings --all.

Примеры:
  tavrix help
  tavrix help transfer
  tavrix help marker rebuild
  tavrix help eventGapHours
)",
    R"(tavrix help — help on the program.
tavrix help COMMAND — help on a command, as tavrix COMMAND --help.
tavrix help KEY — one setting: its meaning, its values and how to set it.

For all settings at once: tavrix settings --all.

Examples:
  tavrix help
  tavrix help transfer
  tavrix help marker rebuild
  tavrix help eventGapHours
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
