#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrix {

/// The languages that the program talks.
enum class Language { russian, english };

/// The language for "system": English on an English machine, Russian on any other.
Language languageOfLocale(std::string_view localeID);

/// One sentence for people in both languages, with the types of what is put in. A sentence that
/// lacks a language, or whose places do not fit its types, does not compile.
template <typename... Values>
struct Sentence {
  fmt::format_string<const Values&...> russian;
  fmt::format_string<const Values&...> english;
};

/// A noun in the forms that follow a number.
struct CountedNoun {
  std::string_view russianOne;   ///< 1, 21: "файл"
  std::string_view russianFew;   ///< 2–4, 22: "файла"
  std::string_view russianMany;  ///< 5–20: "файлов"
  std::string_view englishOne;
  std::string_view englishMany;
};

template <typename... Values>
std::string say(Language language, const Sentence<Values...>& sentence,
                const std::type_identity_t<Values>&... values) {
  return fmt::format(language == Language::russian ? sentence.russian : sentence.english,
                     values...);
}

/// The form of the noun that goes with a number: "файла" for 22.
std::string_view nounFor(Language language, std::uint64_t count, const CountedNoun& noun);
/// Number and noun: "1 024 файла", "1,024 files".
std::string counted(Language language, std::uint64_t count, const CountedNoun& noun);
/// A number with its thousands apart: "1 024", "1,024".
std::string numberText(Language language, std::uint64_t count);
/// A size in decimal units with at most one decimal: "2,9 МБ", "2.9 MB"; bytes below 1000 as they
/// are.
std::string bytesText(Language language, std::uint64_t bytes);

}  // namespace tavrix
