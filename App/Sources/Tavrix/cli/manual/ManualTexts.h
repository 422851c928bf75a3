#pragma once

#include "foundation/Sentence.h"

/// The parts of the manual page that no help text has, in both languages side by side.
namespace tavrix::cli::sentences {

inline constexpr Sentence<> manualName{"переносит фотографии и видео айфона в папки",
                                       "copies the photos and videos of an iPhone into folders"};
inline constexpr Sentence<> manualHeader{"Команды", "Commands"};
inline constexpr Sentence<> sectionName{"ИМЯ", "NAME"};
inline constexpr Sentence<> sectionSynopsis{"ВЫЗОВ", "SYNOPSIS"};
inline constexpr Sentence<> sectionDescription{"ОПИСАНИЕ", "DESCRIPTION"};
inline constexpr Sentence<> sectionCommands{"КОМАНДЫ", "COMMANDS"};
inline constexpr Sentence<> sectionOptions{"ПАРАМЕТРЫ ВСЕХ КОМАНД", "OPTIONS"};
inline constexpr Sentence<> sectionSettings{"НАСТРОЙКИ", "SETTINGS"};
inline constexpr Sentence<> sectionExitStatus{"ЗАВЕРШЕНИЕ", "EXIT STATUS"};
inline constexpr Sentence<> sectionEnvironment{"ПЕРЕМЕННЫЕ ОКРУЖЕНИЯ", "ENVIRONMENT"};
inline constexpr Sentence<> sectionFiles{"ФАЙЛЫ", "FILES"};
inline constexpr Sentence<> sectionExamples{"ПРИМЕРЫ", "EXAMPLES"};
inline constexpr Sentence<> manualCommand{"КОМАНДА", "COMMAND"};
inline constexpr Sentence<> manualArguments{"ПАРАМЕТРЫ", "ARGUMENTS"};
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> manualSetting{
    "{}. Значения: {}. Исходно: {}.", "{}. Values: {}. Initially: {}."};
inline constexpr Sentence<> manualKept{"Запоминается.", "Can be saved."};

/// A variable of the environment or a file, and its meaning.
struct ManualEntry {
  std::string_view name;
  Sentence<> meaning;
};

inline constexpr ManualEntry manualVariables[] = {
    {"XDG_CONFIG_HOME",
     {"папка, в которой лежит Tavrix/defaults.json; без неё — ~/.config",
      "the folder that holds Tavrix/defaults.json; without it, ~/.config"}},
    {"XDG_STATE_HOME",
     {"папка, в которой лежит папка состояния; без неё — ~/.local/state",
      "the folder that holds the state folder; without it, ~/.local/state"}},
    {"LC_ALL, LC_MESSAGES, LANG",
     {"язык сообщений, если его не назвали --lang и uiLanguage",
      "the language of messages, if neither --lang nor uiLanguage names one"}},
    {"LC_ALL, LC_TIME, LANG",
     {"язык имён папок, если шаблон не назвал своего",
      "the language of folder names, if the template names none"}},
    {"TZ", {"часовой пояс; без неё — пояс системы", "the time zone; without it, the system's"}},
};

inline constexpr ManualEntry manualFiles[] = {
    {"~/.config/Tavrix/defaults.json",
     {"запомненные настройки и шаблоны", "the saved settings and templates"}},
    {"~/.local/state/Tavrix",
     {"папка состояния: история переносов и то, что прочитано с телефонов",
      "the state folder: the history of transfers, and what was read from phones"}},
};

}  // namespace tavrix::cli::sentences
