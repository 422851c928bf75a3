#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the command line about where the dates of shots come from, in both languages
/// side by side.
namespace tavrix::cli::sentences {

/// Counted shots behind the Russian "у": the genitive.
inline constexpr CountedNoun shotsWithDate{"снимка", "снимков", "снимков", "shot", "shots"};
inline constexpr Sentence<std::string_view> onlyFileDate{
    "У {} известна только дата файла.", "For {}, only the date of the file is known."};
inline constexpr Sentence<> datedOtherwise{"Дата этих снимков взята не из них самих:",
                                           "The dates of these shots are not their own:"};
inline constexpr Sentence<> titleDateSource{"Откуда дата", "Date from"};
inline constexpr Sentence<> sourceName{"имя файла", "file name"};
inline constexpr Sentence<> sourceFile{"дата файла", "date of the file"};

}  // namespace tavrix::cli::sentences
