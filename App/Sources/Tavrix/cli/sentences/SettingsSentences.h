#pragma once

#include "cli/CliSentences.h"

/// What the commands on kept settings and templates tell people, in both languages side by side.
namespace tavrix::cli::sentences {

// The file of the settings.
inline constexpr Sentence<Text, std::uint64_t, std::uint64_t> defaultsDamaged{
    "Файл настроек «{}» испорчен, строка {}, столбец {}: действуют исходные настройки; исправьте "
    "файл или уберите его.",
    "The settings file “{}” is damaged, line {}, column {}: the initial settings count; mend the "
    "file or remove it."};
inline constexpr Sentence<Text> defaultsNoObject{
    "Файл настроек «{}» — не объект JSON или слишком велик: действуют исходные настройки; "
    "исправьте файл или уберите его.",
    "The settings file “{}” is no JSON object or too large: the initial settings count; mend the "
    "file or remove it."};
inline constexpr Sentence<Text> defaultsSetAside{
    "Испорченный файл настроек сохранён как «{}», а настройки начаты заново.",
    "The damaged settings file is kept as “{}”, and the settings have begun anew."};
inline constexpr Sentence<Text, Text> defaultsUnreadable{
    "Файл настроек «{}» не читается ({}): действуют исходные настройки; проверьте права и диск.",
    "The settings file “{}” cannot be read ({}): the initial settings count; check its permissions "
    "and the disk."};
inline constexpr Sentence<Text, Text> defaultsNotSaved{
    "Настройки не сохранились: «{}», {}; проверьте права и место на диске.",
    "The settings were not saved: “{}”, {}; check the permissions and the space on the disk."};
inline constexpr Sentence<Text> defaultsBusy{
    "Настройки не сохранились: файл «{}» занят другой программой; повторите позже.",
    "The settings were not saved: another program holds the file “{}”; try again later."};
inline constexpr Sentence<Text> defaultsTooLarge{
    "Настройки не сохранились: значение слишком велико для файла «{}»; сократите его.",
    "The settings were not saved: the value is too large for the file “{}”; shorten it."};
inline constexpr Sentence<> defaultsPlaceUnknown{
    "Неизвестно, где хранить настройки; задайте переменную окружения HOME или XDG_CONFIG_HOME.",
    "It is not known where settings are kept; set the environment variable HOME or "
    "XDG_CONFIG_HOME."};
inline constexpr Sentence<> demoKeepsNothing{
    "В демонстрации настройки не записываются; уберите переменную окружения DEMO_DIR.",
    "A demo writes no settings; unset the environment variable DEMO_DIR."};

// Settings.
inline constexpr Sentence<Text> keptNotAssignment{
    "Настройке «{}» не дано значение; пример: tavrix settings set eventGapHours=6.",
    "The setting “{}” is given no value; for example: tavrix settings set eventGapHours=6."};
inline constexpr Sentence<Text, Text> keptUnknownKey{"Настройки «{}» нет; запоминаются: {}.",
                                                     "There is no setting “{}”; kept are: {}."};
inline constexpr Sentence<Text> countsForOneCall{
    "Настройка «{0}» не запоминается, она действует на один вызов: --set {0}=ЗНАЧЕНИЕ.",
    "The setting “{0}” is not kept, it counts for one call: --set {0}=VALUE."};
inline constexpr Sentence<> homeNameWithoutHome{
    "Имя дают дому, а он не задан; сначала укажите его: tavrix settings set "
    "homeOverride=55.75,37.62.",
    "A name is that of a home, and none is set; set it first: tavrix settings set "
    "homeOverride=41.9,12.5."};
inline constexpr Sentence<> savedPresetsElsewhere{
    "Шаблоны сохраняются иначе: tavrix presets save НАЗВАНИЕ JSON.",
    "Templates are saved another way: tavrix presets save NAME JSON."};
inline constexpr Sentence<> resetNamesNothing{
    "Не сказано, что вернуть к исходному; назовите настройку или добавьте --all.",
    "It is not said what to reset; name a setting or add --all."};
inline constexpr Sentence<Text> resetNamesBoth{"Либо «{}», либо --all; оставьте что-то одно.",
                                               "Either “{}” or --all; leave one of them out."};
inline constexpr Sentence<> titleSetting{"Настройка", "Setting"};
inline constexpr Sentence<> titleValue{"Значение", "Value"};
inline constexpr Sentence<> titleState{"Состояние", "State"};
inline constexpr Sentence<> valueIsInitial{"исходная", "initial"};
inline constexpr Sentence<> valueIsSet{"задана", "set"};

// Templates.
inline constexpr Sentence<> presetNameEmpty{
    "У шаблона должно быть название; пример: tavrix presets --help.",
    "A template must have a name; for an example: tavrix presets --help."};
inline constexpr Sentence<Text> presetNameTaken{
    "Шаблон «{}» идёт с программой; сохраните свой под другим названием.",
    "The template “{}” comes with the program; save yours under another name."};
inline constexpr Sentence<Text> presetIsBuiltin{
    "Шаблон «{}» идёт с программой, удалить его нельзя; список: tavrix presets.",
    "The template “{}” comes with the program and cannot be deleted; for the list: tavrix "
    "presets."};
inline constexpr Sentence<Text> presetUnknown{
    "Сохранённого шаблона «{}» нет; список: tavrix presets.",
    "There is no saved template “{}”; for the list: tavrix presets."};
inline constexpr Sentence<> presetsUnreadable{
    "Сохранённые шаблоны («savedPresets» в файле настроек) не читаются; исправьте их или забудьте: "
    "tavrix settings reset savedPresets.",
    "The saved templates (“savedPresets” in the settings file) cannot be read; mend them or forget "
    "them: tavrix settings reset savedPresets."};
inline constexpr Sentence<Text> presetDeleted{"Шаблон «{}» удалён.",
                                              "The template “{}” is deleted."};
inline constexpr Sentence<> presetsForgotten{"Сохранённые шаблоны забыты.",
                                             "The saved templates are forgotten."};
inline constexpr Sentence<Text> builtinPreset{"{} (идёт с программой)", "{} (built in)"};
inline constexpr Sentence<Text> savedPreset{"{} (сохранённый)", "{} (saved)"};

}  // namespace tavrix::cli::sentences
