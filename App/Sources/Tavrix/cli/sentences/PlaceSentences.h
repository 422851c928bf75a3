#pragma once

#include <string_view>

#include "foundation/Sentence.h"

namespace tavrix::cli {

/// Where the names of places come from; their licences ask for it.
inline constexpr std::string_view placesAttribution =
    "Place names: GeoNames (https://www.geonames.org), CC BY 4.0, adapted.\n"
    "Borders: country-coder contributors, ISC License (gazetteer-licences.txt).\n";

/// What the command line tells of places, in both languages side by side.
namespace sentences {

inline constexpr Sentence<std::string_view, std::string_view> gazetteerUnreadable{
    "Таблица мест «{}» не открывается: {}; папки останутся без названий городов. Переустановите "
    "программу.",
    "The table of places “{}” cannot be opened: {}; folders go without names of cities. Install "
    "the program again."};
inline constexpr Sentence<std::size_t> gazetteerNotOne{"это не таблица мест (байт {})",
                                                       "it is no table of places (byte {})"};
inline constexpr Sentence<std::size_t> gazetteerOtherVersion{
    "она от другой версии программы (байт {})",
    "it is of another version of the program (byte {})"};
inline constexpr Sentence<std::size_t> gazetteerWrongSize{"её размер неверен (байт {})",
                                                          "its size is wrong (byte {})"};
inline constexpr Sentence<std::size_t> gazetteerWrongOrder{"её части перепутаны (байт {})",
                                                           "its parts are out of order (byte {})"};

inline constexpr Sentence<std::string_view, std::string_view> chosenPlacesUnknown{
    "Здесь ничего не снято, проверьте названия в places: {}. Места съёмки: {}",
    "Nothing was taken here, check the names in places: {}. Where shots were taken: {}"};
inline constexpr Sentence<std::string_view> chosenPlacesNone{
    "Здесь ничего не снято, проверьте названия в places: {}. Ни у одного снимка нет места с "
    "названием.",
    "Nothing was taken here, check the names in places: {}. No shot has a place with a name."};
inline constexpr Sentence<> chosenPlacesWithoutNames{
    "Без названий мест снимки по places не выбрать; включите geocodingEnabled или уберите places.",
    "Without names of places no shots can be chosen by places; turn geocodingEnabled on or leave "
    "out places."};

inline constexpr Sentence<> titleCity{"Город или регион", "City or region"};
inline constexpr Sentence<> titleCountry{"Страна", "Country"};
inline constexpr Sentence<> titleCountryAndCity{"Страна и город", "Country and city"};
inline constexpr Sentence<> cityNotYet{"город ещё определяется…",
                                       "the city is still being looked up…"};
inline constexpr Sentence<> withoutCountry{"Без страны", "No country"};
inline constexpr Sentence<> withoutCity{"без города", "no city"};
inline constexpr Sentence<> withoutPlace{"Без места", "No place"};
inline constexpr Sentence<> placeNamesReset{
    "Запомненные названия мест забыты; они найдутся снова, когда понадобятся.",
    "The place names found so far are forgotten; they will be found again when needed."};
inline constexpr Sentence<> placeNamesNone{"Забывать нечего: названия мест ещё не запомнены.",
                                           "There is nothing to forget: no place names are kept."};

}  // namespace sentences

}  // namespace tavrix::cli
