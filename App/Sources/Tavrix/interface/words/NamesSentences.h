#pragma once

#include <string_view>

#include "foundation/Sentence.h"
#include "text/RunSentences.h"

/// The sentences of the inspector about the names of folders and files.
namespace tavrix::window::sentences {

inline constexpr Sentence<> namesSection{"Имена", "Names"};
inline constexpr Sentence<> templateTitle{"Имя папки", "Folder name"};
using tavrix::sentences::ownTemplate;
/// The folder name of a real or a made-up folder.
inline constexpr Sentence<std::string_view> nameExample{"Например: {}", "For example: {}"};
inline constexpr Sentence<> exampleCity{"Рим", "Rome"};
inline constexpr Sentence<> exampleCountry{"Италия", "Italy"};
inline constexpr Sentence<> prefixTitle{"Префикс имён файлов", "Prefix of file names"};
inline constexpr Sentence<> prefixNone{"Без префикса", "No prefix"};
inline constexpr Sentence<> prefixPhone{"Телефон", "Phone"};
inline constexpr Sentence<> prefixCustom{"Свой", "Custom"};
inline constexpr Sentence<> prefixDone{"Готово", "Done"};
inline constexpr Sentence<> prefixDraft{"Текст перед именем файла", "Text before the file name"};
inline constexpr Sentence<> prefixNoneHelp{"Файлы называются, как на телефоне.",
                                           "Files are named as on the phone."};
inline constexpr Sentence<> prefixPhoneHelp{
    "Имя телефона впереди каждого файла: снимки двух телефонов не путаются.",
    "The phone's name in front of every file: the pictures of two phones are not mixed up."};
inline constexpr Sentence<> prefixCustomHelp{"Ваш текст впереди каждого файла.",
                                             "Your text in front of every file."};
inline constexpr Sentence<> placeNames{"Названия мест в именах папок",
                                       "Place names in folder names"};
inline constexpr Sentence<> placeNamesHelp{
    "Названия берутся из таблицы программы, без сети. Выключите — имена будут без городов.",
    "Names come from the program's own table, without network. Switched off, names have no "
    "cities."};
inline constexpr Sentence<> mergeDistricts{"Объединять районы", "Merge districts"};
inline constexpr Sentence<> mergeDistrictsHelp{"Район называется по своему городу.",
                                               "A district gets the name of its city."};
inline constexpr Sentence<> mergeSameNames{"Одинаковые имена — одна папка",
                                           "One folder for equal names"};
inline constexpr Sentence<> mergeSameNamesHelp{
    "Группы с одинаковым именем папки собираются в одну вместо суффиксов «(2)», «(3)».",
    "Groups with the same folder name go into one folder instead of getting the suffixes “(2)”, "
    "“(3)”."};
inline constexpr Sentence<> severalCities{"Два города в имени", "Two cities in a name"};
inline constexpr Sentence<> severalCitiesHelp{
    "Если ни в одном городе не снята половина папки, в имени будут два самых частых.",
    "If no city has half of a folder's shots, its name has the two with most."};
inline constexpr Sentence<> wholeFolderDates{"Месяц без числа, год без месяца",
                                             "No day for months, no month for years"};
inline constexpr Sentence<> wholeFolderDatesHelp{
    "Папка за месяц называется «2016-08», за год — «2016», а не по первому дню.",
    "The folder of a month is named “2016-08” and that of a year “2016”, not after its first day."};
inline constexpr Sentence<> continueFolders{"Продолжать начатые папки", "Continue folders"};
inline constexpr Sentence<> continueFoldersHelp{
    "Новые снимки — в папку прошлого переноса, даже если теперь она называлась бы иначе.",
    "New shots go into the folder of an earlier transfer, even if its name would be different "
    "now."};

}  // namespace tavrix::window::sentences
