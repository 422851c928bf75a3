#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the sidebar.
namespace tavrix::window::sentences {

inline constexpr Sentence<> outlineName{"Годы и места", "Years and places"};
inline constexpr Sentence<> outlineAll{"Все снимки", "All shots"};
inline constexpr Sentence<> outlineYears{"Годы", "Years"};
inline constexpr Sentence<> outlinePlaces{"Места", "Places"};
inline constexpr Sentence<> outlineNoPlace{"Без места", "No place"};

// Read aloud by a screen reader.
inline constexpr CountedNoun outlineFiles{"файл", "файла", "файлов", "file", "files"};
/// A title and its files, or a title and one of the next two.
inline constexpr Sentence<std::string_view, std::string_view> outlineRow{"{}, {}", "{}, {}"};
inline constexpr Sentence<> outlineOpen{"раскрыто", "expanded"};
inline constexpr Sentence<> outlineClosed{"свёрнуто", "collapsed"};

}  // namespace tavrix::window::sentences
