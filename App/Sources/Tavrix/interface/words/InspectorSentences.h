#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the inspector that belong to all of its sections.
namespace tavrix::window::sentences {

inline constexpr Sentence<> inspectorName{"Настройки переноса", "Transfer options"};
inline constexpr Sentence<> inspectorWidth{"Ширина настроек", "Width of the options"};

// The settings that last for one launch.
inline constexpr Sentence<> whatForgotten{
    "При закрытии программы раздел сбрасывается; сохраняются только «Дни по часам камеры» и выбор "
    "об оптимизированных копиях.",
    "This section is forgotten when the program closes; only “Days by the Camera’s Clock” and the "
    "choice about optimized copies are kept."};
inline constexpr Sentence<> namesForgotten{
    "Префикс, районы и одинаковые имена забываются при закрытии программы.",
    "The prefix, districts and equal names are forgotten when the program closes."};
inline constexpr Sentence<> formatForgotten{"Этот раздел забывается при закрытии программы.",
                                            "This section is forgotten when the program closes."};

// Numbers.
inline constexpr Sentence<std::string_view> hours{"{} ч", "{} h"};
inline constexpr Sentence<std::string_view> kilometres{"{} км", "{} km"};
inline constexpr Sentence<std::string_view> percent{"{} %", "{}%"};
inline constexpr Sentence<> hoursUnit{"ч", "h"};
inline constexpr Sentence<> kilometresUnit{"км", "km"};
inline constexpr Sentence<> percentUnit{"%", "%"};
inline constexpr CountedNoun daysOfTrip{"день", "дня", "дней", "day", "days"};
/// The earlier value of a changed setting: "было 4 ч".
inline constexpr Sentence<std::string_view> wasValue{"было {}", "was {}"};
inline constexpr Sentence<std::string_view> resetValue{"Вернуть {}", "Back to {}"};
inline constexpr Sentence<> less{"Меньше", "Less"};
inline constexpr Sentence<> more{"Больше", "More"};

}  // namespace tavrix::window::sentences
