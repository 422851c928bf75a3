#pragma once

#include "foundation/Sentence.h"

/// The sentences of the application model for the user, in both languages side by side.
namespace tavrix::sentences {

inline constexpr Sentence<> noDevice{
    "Подключите iPhone кабелем и разблокируйте его — переносить пока неоткуда.",
    "Connect the iPhone by cable and unlock it — there is nothing to transfer from yet."};
inline constexpr Sentence<> noDestination{"Сначала выберите, куда переносить файлы.",
                                          "First choose where to transfer the files."};
inline constexpr Sentence<> nothingSelected{
    "Не отмечено ни одной группы — или всё уже перенесено. Отметьте группы кружками слева.",
    "No group is checked — or everything has been transferred already. Check groups with the "
    "circles on the left."};

}  // namespace tavrix::sentences
