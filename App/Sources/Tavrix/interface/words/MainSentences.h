#pragma once

#include <string_view>

#include "foundation/Sentence.h"

/// The sentences of the main window: its top bar and what is common to all screens.
namespace tavrix::window::sentences {

inline constexpr Sentence<> programName{"Tavrix", "Tavrix"};
inline constexpr Sentence<> openFolder{"Открыть папку или карту…", "Open a Folder or Card…"};

// How shots are divided into folders.
inline constexpr Sentence<> layoutName{"Как делить на папки", "How to divide into folders"};
inline constexpr Sentence<> layoutDays{"Дни", "Days"};
inline constexpr Sentence<> layoutMonths{"Месяцы", "Months"};
inline constexpr Sentence<> layoutYears{"Годы", "Years"};
inline constexpr Sentence<> layoutEvents{"События", "Events"};
inline constexpr Sentence<> layoutTrips{"Поездки", "Trips"};

inline constexpr Sentence<> searchHint{"Место, месяц или год", "Place, month or year"};

inline constexpr Sentence<> clearSearch{"Очистить поиск", "Clear Search"};

// The source and the columns.
inline constexpr Sentence<> chooseSource{"Источник", "Source"};
inline constexpr Sentence<> followPhone{"iPhone на кабеле", "iPhone on the cable"};
inline constexpr Sentence<> toggleSidebar{"Годы и места (F9)", "Years and places (F9)"};
inline constexpr Sentence<> toggleInspector{"Настройки переноса (Ctrl+I)",
                                            "Transfer settings (Ctrl+I)"};

// Starting the program.
inline constexpr Sentence<std::string_view> unknownArgument{
    "tavrix-window: неизвестный аргумент «{}»; список — по --help",
    "tavrix-window: unknown argument “{}”; see --help"};
inline constexpr Sentence<> usage{
    R"(tavrix-window [ИСТОЧНИК] [--destination ПАПКА]

ИСТОЧНИК — папка с фото и видео, карта памяти, снимок каталога, phone или phone:НОМЕР.
Без него окно ждёт iPhone на кабеле.

  --destination ПАПКА       куда переносить
  --language ru|en          язык окна
  --appearance light|dark   светлое или тёмное оформление
  --help                    эта справка
  --version                 версия программы
)",
    R"(tavrix-window [SOURCE] [--destination FOLDER]

SOURCE is a folder with photos and videos, a memory card, a snapshot, phone or phone:SERIAL.
Without it the window waits for an iPhone on the cable.

  --destination FOLDER      where to transfer to
  --language ru|en          language of the window
  --appearance light|dark   light or dark look
  --help                    this help
  --version                 version of the program
)"};

}  // namespace tavrix::window::sentences
