#pragma once

#include "cli/sentences/CliSentences.h"

/// The sentences about settings of a call or of the file that have no effect, in both languages
/// side by side.
namespace tavrix::cli::sentences {

inline constexpr Sentence<Text, Text> settingNeedsOther{
    "Настройка {} сейчас ни на что не влияет: она действует только вместе с {}.",
    "The setting {} has no effect: it applies only together with {}."};
inline constexpr Sentence<Text, Text> settingOverruled{
    "Настройка {} сейчас ни на что не влияет: вместо неё действует {}.",
    "The setting {} has no effect: {} takes its place."};
inline constexpr Sentence<Text, Text> settingOtherModes{
    "Настройка {0} сейчас ни на что не влияет: в ней нет режима {1}, а включён он.",
    "The setting {0} has no effect: it has nothing for {1}, the mode of this call."};
inline constexpr Sentence<Text, Text> settingUnknownGroups{
    "В {} есть id, которых нет ни у одной папки: {}; все id печатает tavrix groups --json.",
    "{} has ids that no folder has: {}; tavrix groups --json prints all ids."};
inline constexpr Sentence<Text, Text> periodReversed{
    "Начало периода (periodFrom={}) позже его конца (periodTo={}); поменяйте дни местами.",
    "The period begins (periodFrom={}) after it ends (periodTo={}); swap the two days."};
inline constexpr Sentence<Text, Text> unknownTimeZone{
    "Часовой пояс из переменной окружения TZ неизвестен: «{}»; вместо него взят {}. Можно указать "
    "свой: --set timeZoneID=Europe/Moscow.",
    "The time zone in the environment variable TZ is unknown: “{}”; {} is used instead. To choose "
    "one: --set timeZoneID=Europe/Rome."};

// Values in the settings file.
inline constexpr Sentence<Text, Text, Text, Text> defaultsValueSkipped{
    "В файле настроек «{}» у {} недопустимое значение «{}», действует исходное; можно: {}.",
    "The settings file “{}” has a wrong value for {}, “{}”; the initial value applies. Allowed: "
    "{}."};
inline constexpr Sentence<> allowedHomeObject{
    R"(широта и долгота в градусах вида {{"latitude":55.75,"longitude":37.62}})",
    R"(latitude and longitude in degrees such as {{"latitude":41.9,"longitude":12.5}})"};
inline constexpr Sentence<> allowedTemplateObject{
    "шаблон, как его записывает tavrix settings set nameTemplate",
    "a template as tavrix settings set nameTemplate writes it"};
inline constexpr Sentence<> allowedPresetList{
    "список шаблонов, как его записывает tavrix presets save",
    "a list of templates as tavrix presets save writes it"};

// Something else in place of the settings file.
inline constexpr Sentence<Text, Text> defaultsNotFile{
    "«{}» — {}, а не файл настроек: действуют исходные настройки; уберите или переименуйте её.",
    "“{}” is {}, not a settings file: the initial settings apply; remove or rename it."};
inline constexpr Sentence<Text, Text> defaultsNotSavedNotFile{
    "Настройки не сохранились: «{}» — {}, а не файл настроек; уберите или переименуйте её.",
    "The settings were not saved: “{}” is {}, not a settings file; remove or rename it."};
inline constexpr Sentence<> isFolder{"папка", "a folder"};
inline constexpr Sentence<Text> isLinkToFolder{"ссылка на папку «{}»", "a link to the folder “{}”"};
inline constexpr Sentence<> isLinkCircle{"ссылка, которая ведёт сама на себя",
                                         "a link that leads back to itself"};

}  // namespace tavrix::cli::sentences
