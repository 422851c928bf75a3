#pragma once

#include "cli/sentences/CliSentences.h"

/// The sentences for typed name templates and their context, in both languages side by side.
namespace tavrix::cli::sentences {

/// Ends a fault with the word that was probably meant.
inline constexpr Sentence<Text> perhapsMeant{" (может быть, {}?)", " (did you mean {}?)"};
inline constexpr Sentence<Text> perhapsMeantTitle{" (может быть, «{}»?)", " (did you mean “{}”?)"};

inline constexpr Sentence<std::uint64_t, Text> templateInColumn{"в столбце {} {}",
                                                                "in column {} {}"};
inline constexpr Sentence<> typedUnclosedBrace{
    "скобка «{{» не закрыта; сама скобка в имени пишется «{{{{»",
    "the brace “{{” is not closed; a brace in the name itself is written “{{{{”"};
inline constexpr Sentence<> typedStrayBrace{
    "лишняя скобка «}}»; сама скобка в имени пишется «}}}}»",
    "there is an unmatched “}}”; a brace in the name itself is written “}}}}”"};
/// The word, the one probably meant, and the allowed ones.
inline constexpr Sentence<Text, Text, Text> typedUnknownToken{
    "неизвестный блок «{}»{}, можно: {}", "there is no block “{}”{}, allowed: {}"};
inline constexpr Sentence<Text, Text, Text, Text> typedUnknownStyle{
    "неизвестный вид «{1}» у {0}{2}, можно: {3}", "{0} has no style “{1}”{2}, allowed: {3}"};
inline constexpr Sentence<Text, Text> typedExtraWord{"лишнее слово «{1}» в блоке {0}",
                                                     "there is an extra word “{1}” in {0}"};
inline constexpr Sentence<Text, Text, Text> typedUnknownLanguage{
    "неизвестный язык «{}»{}, можно: {}", "there is no language “{}”{}, allowed: {}"};
inline constexpr Sentence<> typedSecondLanguage{"язык указан второй раз",
                                                "the language is given a second time"};
inline constexpr Sentence<> typedNotPrintable{"непечатаемый символ",
                                              "there is a character that cannot be printed"};
inline constexpr Sentence<Text> typedNoBlock{
    "в нём нет ни одного блока вида {{year}}, и шаблона с таким названием нет{}",
    "it has no block such as {{year}}, and no template has this title{}"};

inline constexpr Sentence<Text, Text, Text> settingBadTemplate{
    "Настройка «{}» не принимает значение «{}»: {}; примеры: tavrix template --help.",
    "The setting “{}” does not accept the value “{}”: {}; for examples, run tavrix template "
    "--help."};
inline constexpr Sentence<Text, Text, Text> contextUnknownField{
    "поля «{}» нет{}, можно: {}", "there is no field “{}”{}, allowed: {}"};

// Examples of names.
inline constexpr Sentence<Text> presetExample{"например: {}", "for example: {}"};
inline constexpr Sentence<> exampleCity{"Рим", "Rome"};
inline constexpr Sentence<> exampleCountry{"Италия", "Italy"};

}  // namespace tavrix::cli::sentences
