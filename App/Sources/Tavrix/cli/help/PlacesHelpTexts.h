#pragma once

#include "cli/help/HelpTexts.h"

/// The help of the commands on places, in both languages side by side.
namespace tavrix::cli::help {

inline constexpr HelpText places{
    R"(tavrix places SOURCE — места съёмки: близкие точки считаются одним местом.

Города и страны берутся из таблицы, которая идёт с программой; в сеть она не обращается. Вдали от
городов место называется по региону или не называется вовсе.

  --set placeRadiusKm=KM        насколько близкие точки считаются одним местом
  --set mergeDistricts=true     части большого города — под именем города
  --set geocodingEnabled=false  без названий
  --set places=НАЗВАНИЯ         только эти страны, города, регионы (действует во всех командах);
                                по-русски или по-английски, страны и кодом: IT

Примеры:
  tavrix places ТЕЛЕФОН
  tavrix places ТЕЛЕФОН --set placeRadiusKm=25
  tavrix groups ТЕЛЕФОН --set 'places=Италия, Вена'
  tavrix groups ТЕЛЕФОН --set 'places={"cities":["Рим"],"includeUnplaced":true}'
)",
    R"(tavrix places SOURCE — the places of the shots; nearby points are treated as one place.

Cities and countries come from a table that ships with the program; the network is not used.
Far from every city, a place has the name of its region or no name.

  --set placeRadiusKm=KM        how near points must be to be one place
  --set mergeDistricts=true     use the city's name for the parts of a large city
  --set geocodingEnabled=false  no names
  --set places=NAMES            only these countries, cities, regions (works in every command), in
                                Russian or English; countries also by their code: IT

Examples:
  tavrix places PHONE
  tavrix places PHONE --set placeRadiusKm=25
  tavrix groups PHONE --set 'places=Italy, Vienna'
  tavrix groups PHONE --set 'places={"cities":["Rome"],"includeUnplaced":true}'
)"};

inline constexpr HelpText geocache{
    R"(tavrix geocache reset — забывает запомненные названия мест (geocache.json в папке состояния).

Они найдутся снова, когда понадобятся; папки с фотографиями не меняются.

Пример:
  tavrix geocache reset
)",
    R"(tavrix geocache reset — deletes the saved place names (geocache.json in the state folder).

They will be looked up again when needed; folders with photos do not change.

Example:
  tavrix geocache reset
)"};

}  // namespace tavrix::cli::help
