#pragma once

#include <string_view>

#include "foundation/Sentence.h"
#include "interface/words/WhatSentences.h"

/// The sentences of the questions and messages over the screen.
namespace tavrix::window::sentences {

inline constexpr Sentence<> understood{"Понятно", "OK"};
inline constexpr Sentence<> cancel{"Отмена", "Cancel"};

// Before a run. The value is a number of shots: "37 снимков".
inline constexpr Sentence<> optimizedText{
    "На телефоне только уменьшенные копии этих снимков, а оригиналы лежат в облаке. Их можно "
    "перенести как есть или пропустить и перенести потом, когда телефон скачает оригиналы.",
    "The phone has only reduced copies of these shots; the originals are in the cloud. They can be "
    "transferred as they are, or skipped until the phone has downloaded the originals."};
inline constexpr Sentence<> transferEverything{"Перенести всё", "Transfer everything"};
inline constexpr Sentence<> skipOptimized{"Пропустить их", "Skip them"};

inline constexpr Sentence<> noDeviceTitle{"Нет телефона", "No phone"};
inline constexpr Sentence<> noDestinationTitle{"Не выбрана папка", "No folder is chosen"};
inline constexpr Sentence<> nothingSelectedTitle{"Переносить нечего", "Nothing to transfer"};
inline constexpr Sentence<> quotaTitle{"На сегодня всё", "That is all for today"};
inline constexpr Sentence<> quotaText{
    "Дневной запас переносов без лицензии исчерпан. Завтра можно будет продолжить.",
    "Today's allowance without a licence is used up. You can go on tomorrow."};
inline constexpr Sentence<> startFailedTitle{"Перенос не начался", "The transfer did not start"};
inline constexpr Sentence<> unknownFailure{
    "Внутренняя ошибка программы. Закройте окно, откройте снова и повторите.",
    "Internal error of the program. Close the window, open it again and try once more."};

// During a run.
inline constexpr Sentence<> stopTitle{"Прервать перенос?", "Stop the transfer?"};
inline constexpr Sentence<> stopText{
    "Что успело скопироваться, останется на месте. Следующий перенос скопирует остальное.",
    "What was copied by then stays in place. The next transfer copies the rest."};
inline constexpr Sentence<> stopPackingText{
    "Готовые архивы останутся. Следующий перенос упакует всё заново, в новые архивы.",
    "Finished archives stay in place. The next transfer packs everything again, into new "
    "archives."};
inline constexpr Sentence<> stop{"Прервать", "Stop"};
inline constexpr Sentence<> stopAndClose{"Прервать и закрыть", "Stop and Close"};
inline constexpr Sentence<> keepGoing{"Продолжить перенос", "Keep Going"};

// A folder was dropped that is no source.
inline constexpr Sentence<> dropTitle{"Переносить в эту папку?", "Transfer to this folder?"};
/// The folder.
inline constexpr Sentence<std::string_view> dropText{
    "В «{}» не видно снимков телефона или карты, поэтому открыть её как источник нельзя.",
    "“{}” has no pictures of a phone or a card, so it cannot be opened as a source."};
inline constexpr Sentence<> dropAccept{"Переносить сюда", "Transfer Here"};

}  // namespace tavrix::window::sentences
