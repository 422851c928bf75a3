#pragma once

#include "cli/sentences/CliSentences.h"

/// The sentences of the commands for saved settings and templates, in both languages side by side.
namespace tavrix::cli::sentences {

// The file of the settings.
inline constexpr Sentence<Text, std::uint64_t, std::uint64_t> defaultsDamaged{
    "Файл настроек «{}» повреждён, строка {}, столбец {}: действуют исходные настройки; исправьте "
    "файл или уберите его.",
    "The settings file “{}” is damaged, line {}, column {}: the initial settings apply; fix the "
    "file or remove it."};
inline constexpr Sentence<Text> defaultsNoObject{
    "Файл настроек «{}» — не объект JSON или слишком велик: действуют исходные настройки; "
    "исправьте файл или уберите его.",
    "The settings file “{}” is not a JSON object or is too large: the initial settings apply; fix "
    "the file or remove it."};
inline constexpr Sentence<Text> defaultsSetAside{
    "Повреждённый файл настроек сохранён как «{}», настройки начаты заново.",
    "The damaged settings file was kept as “{}”, and a new one was started."};
inline constexpr Sentence<Text, Text> defaultsUnreadable{
    "Не удалось прочитать файл настроек «{}» ({}): действуют исходные настройки; проверьте права "
    "доступа и диск.",
    "Cannot read the settings file “{}” ({}): the initial settings apply; check its permissions "
    "and the disk."};
inline constexpr Sentence<Text, Text> defaultsNotSaved{
    "Настройки не сохранились: «{}», {}; проверьте права доступа и место на диске.",
    "The settings were not saved: “{}”, {}; check the permissions and the free space on the disk."};
inline constexpr Sentence<Text> defaultsBusy{
    "Настройки не сохранились: файл «{}» занят другой программой; повторите позже.",
    "The settings were not saved: another program is using the file “{}”; try again later."};
inline constexpr Sentence<Text> defaultsTooLarge{
    "Настройки не сохранились: значение слишком велико для файла «{}»; сократите его.",
    "The settings were not saved: the value is too large for the file “{}”; shorten it."};
inline constexpr Sentence<> defaultsPlaceUnknown{
    "Неизвестно, где хранить настройки; задайте переменную окружения HOME или XDG_CONFIG_HOME.",
    "Cannot tell where to keep the settings; set the environment variable HOME or "
    "XDG_CONFIG_HOME."};
inline constexpr Sentence<> demoKeepsNothing{
    "В демонстрации настройки не сохраняются; уберите переменную окружения DEMO_DIR.",
    "In a demo, settings are not saved; unset the environment variable DEMO_DIR."};

// Settings.
inline constexpr Sentence<Text> keptNotAssignment{
    "Не указано значение настройки «{}»; пример: tavrix settings set eventGapHours=6.",
    "The setting “{}” needs a value; for example: tavrix settings set eventGapHours=6."};
inline constexpr Sentence<Text, Text> keptUnknownKey{
    "Настройки «{}» нет; запоминаются: {}.",
    "There is no setting “{}”; the saved settings are: {}."};
inline constexpr Sentence<Text> countsForOneCall{
    "Настройка «{0}» не запоминается, она действует на один вызов: --set {0}=ЗНАЧЕНИЕ.",
    "The setting “{0}” is not saved, it applies to one call: --set {0}=VALUE."};
inline constexpr Sentence<> homeNameWithoutHome{
    "Назвать можно только указанный дом; сначала укажите его: tavrix settings set "
    "homeOverride=55.75,37.62.",
    "Only a home that you have set can have a name; set it first: tavrix settings set "
    "homeOverride=41.9,12.5."};
inline constexpr Sentence<> savedPresetsElsewhere{
    "Шаблоны сохраняет другая команда: tavrix presets save НАЗВАНИЕ ШАБЛОН.",
    "Templates are saved by another command: tavrix presets save NAME TEMPLATE."};
inline constexpr Sentence<> resetNamesNothing{
    "Укажите настройку, которую нужно сбросить, или --all.",
    "Name the setting to reset, or add --all."};
inline constexpr Sentence<Text> resetNamesBoth{
    "Нельзя указать и «{}», и --all; оставьте что-то одно.",
    "“{}” and --all cannot be used together; remove one of them."};
inline constexpr Sentence<> titleSetting{"Настройка", "Setting"};
inline constexpr Sentence<> titleValue{"Значение", "Value"};
inline constexpr Sentence<> titleState{"Состояние", "State"};
inline constexpr Sentence<> valueIsInitial{"исходная", "initial"};
inline constexpr Sentence<> valueIsSet{"задана", "set"};

// Templates.
inline constexpr Sentence<> presetNameEmpty{
    "У шаблона должно быть название; пример: tavrix presets --help.",
    "A template must have a name; for an example, run tavrix presets --help."};
inline constexpr Sentence<Text> presetNameTaken{
    "Шаблон «{}» идёт с программой; сохраните свой под другим названием.",
    "The template “{}” is built in; save yours under another name."};
inline constexpr Sentence<Text> presetIsBuiltin{
    "Шаблон «{}» идёт с программой, удалить его нельзя; список: tavrix presets.",
    "The template “{}” is built in and cannot be deleted; for the list, run tavrix presets."};
inline constexpr Sentence<Text> presetUnknown{
    "Сохранённого шаблона «{}» нет; список: tavrix presets.",
    "There is no saved template “{}”; for the list, run tavrix presets."};
inline constexpr Sentence<> presetsUnreadable{
    "Не удалось прочитать сохранённые шаблоны («savedPresets» в файле настроек); исправьте их или "
    "сбросьте: tavrix settings reset savedPresets.",
    "Cannot read the saved templates (“savedPresets” in the settings file); fix them or reset "
    "them: tavrix settings reset savedPresets."};
inline constexpr Sentence<Text> presetDeleted{"Шаблон «{}» удалён.",
                                              "The template “{}” was deleted."};
inline constexpr Sentence<> presetsForgotten{"Сохранённые шаблоны удалены.",
                                             "The saved templates were deleted."};
inline constexpr Sentence<Text> builtinPreset{"{} (идёт с программой)", "{} (built in)"};
inline constexpr Sentence<Text> savedPreset{"{} (сохранённый)", "{} (saved)"};

}  // namespace tavrix::cli::sentences
