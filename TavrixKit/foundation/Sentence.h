#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrix {

/// The languages of the program.
enum class Language { russian, english };

/// Returns the language for the setting "system": English if the locale is English, otherwise
/// Russian.
Language languageOfLocale(std::string_view localeID);

/// One sentence for the user in both languages, with the types of its values. A sentence without
/// one of the languages, or whose placeholders do not match the types, does not compile.
template <typename... Values>
struct Sentence {
  fmt::format_string<const Values&...> russian;
  fmt::format_string<const Values&...> english;
};

#ifdef __APPLE__
inline constexpr bool isMac = true;
#else
inline constexpr bool isMac = false;
#endif

/// Returns the form of a sentence for this platform: `mac` names the Mac or macOS, `other` is for
/// every other system.
template <typename... Values>
constexpr Sentence<Values...> onPlatform(const Sentence<Values...>& mac,
                                         const Sentence<Values...>& other) {
  return isMac ? mac : other;
}

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

/// Returns the form of the noun that follows a number: "файла" for 22.
std::string_view nounFor(Language language, std::uint64_t count, const CountedNoun& noun);
/// Returns the number and the noun: "1 024 файла", "1,024 files".
std::string counted(Language language, std::uint64_t count, const CountedNoun& noun);
/// Returns a number with its thousands separated: "1 024", "1,024".
std::string numberText(Language language, std::uint64_t count);
/// Returns a size in decimal units, with one decimal from 1 kB on: "2,9 МБ", "2.9 MB". Below 1000
/// it is a whole number of bytes.
std::string bytesText(Language language, std::uint64_t bytes);

}  // namespace tavrix
