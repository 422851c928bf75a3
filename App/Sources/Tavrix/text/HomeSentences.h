#pragma once

#include "foundation/Sentence.h"

/// The sentences about trips and the home from which they are measured, in both languages side by
/// side.
namespace tavrix::sentences {

inline constexpr Sentence<> homeMissing{"Дом не определён: нет геоданных",
                                        "Home not determined: no geodata"};
inline constexpr Sentence<> homeAmbiguous{"Несколько вариантов дома — проверьте выбор",
                                          "Several possible homes: check the choice"};
/// A home of the past, and the last day there.
inline constexpr Sentence<std::string_view, std::string_view> homeUntil{"{} — до {}",
                                                                        "{} — until {}"};
/// A home of the past, and the first and the last day there.
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> homeBetween{
    "{} — с {} по {}", "{} — from {} to {}"};
/// The present home, and the first day there.
inline constexpr Sentence<std::string_view, std::string_view> homeSince{"{} — с {}",
                                                                        "{} — since {}"};
inline constexpr Sentence<> whyTrips{
    "Пребывание в одном городе вдали от дома — папка поездки; новый город — новая поездка. "
    "Остальное — по месяцам.",
    "A stay in one city away from home is a trip folder; a new city is a new trip. The rest goes "
    "into month folders."};

}  // namespace tavrix::sentences
