#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the list of folders.
namespace tavrix::window::sentences {

inline constexpr CountedNoun photos{"фото", "фото", "фото", "photo", "photos"};
inline constexpr CountedNoun videos{"видео", "видео", "видео", "video", "videos"};
inline constexpr CountedNoun newFiles{"новый", "новых", "новых", "new", "new"};

inline constexpr Sentence<> inPlace{"уже на месте", "already there"};
inline constexpr Sentence<> noDate{"Без даты", "No date"};

}  // namespace tavrix::window::sentences
