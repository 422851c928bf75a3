#pragma once

#include <string_view>

#include "cli/call/Invocation.h"
#include "foundation/Sentence.h"

namespace tavrix::cli {

/// The sources of the place names; their licences require this notice.
inline constexpr std::string_view placesAttribution =
    "Place names: GeoNames (https://www.geonames.org), CC BY 4.0, adapted.\n"
    "Borders: country-coder contributors, ISC License (gazetteer-licences.txt).\n";

/// The sentences of the command line about places, in both languages side by side.
namespace sentences {

inline constexpr Sentence<std::string_view, std::string_view> gazetteerUnreadable{
    "Таблица мест «{}» не открывается: {}; папки останутся без названий городов. Переустановите "
    "программу.",
    "Cannot open the table of places “{}”: {}; folders will have no city names. Reinstall the "
    "program."};
inline constexpr Sentence<std::size_t> gazetteerNotOne{"это не таблица мест (байт {})",
                                                       "it is not a table of places (byte {})"};
inline constexpr Sentence<std::size_t> gazetteerOtherVersion{
    "она от другой версии программы (байт {})",
    "it belongs to another version of the program (byte {})"};
inline constexpr Sentence<std::size_t> gazetteerWrongSize{"её размер неверен (байт {})",
                                                          "its size is wrong (byte {})"};
inline constexpr Sentence<std::size_t> gazetteerWrongOrder{"её части перепутаны (байт {})",
                                                           "its parts are out of order (byte {})"};

inline constexpr Sentence<std::string_view, std::string_view> chosenPlacesUnknown{
    "В этих местах ничего не снято, проверьте названия в places: {}. Места съёмки: {}",
    "No shots were taken there, check the names in places: {}. Places with shots: {}"};
inline constexpr Sentence<std::string_view> chosenPlacesNone{
    "В этих местах ничего не снято, проверьте названия в places: {}. Ни у одного снимка нет места "
    "с названием.",
    "No shots were taken there, check the names in places: {}. No shot has a place with a name."};
inline constexpr Sentence<> chosenPlacesWithoutNames{
    "Чтобы выбрать снимки по places, нужны названия мест; включите geocodingEnabled или уберите "
    "places.",
    "Choosing shots by places needs place names; turn on geocodingEnabled or remove places."};

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
    "The saved place names were deleted; they will be looked up again when needed."};
inline constexpr Sentence<> placeNamesNone{
    "Забывать нечего: названия мест ещё не запомнены.",
    "There is nothing to forget: no place names are saved yet."};

}  // namespace sentences

}  // namespace tavrix::cli
