#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// Suggestions to merge folders, in both languages side by side.
namespace tavrix::sentences {

inline constexpr CountedNoun tripsToMerge{"поездка", "поездки", "поездок", "trip", "trips"};
inline constexpr CountedNoun outingsToMerge{"вылазка", "вылазки", "вылазок", "outing", "outings"};
/// The city, and the trips.
inline constexpr Sentence<std::string_view, std::string_view> mergeOneOuting{
    "{}: {} и вылазка — одна папка?", "{}: {} and an outing – one folder?"};
inline constexpr Sentence<std::string_view, std::string_view, std::string_view> mergeOutings{
    "{}: {} и {} — одна папка?", "{}: {} and {} – one folder?"};

}  // namespace tavrix::sentences
