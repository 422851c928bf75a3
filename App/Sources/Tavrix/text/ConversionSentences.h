#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "transfer/ConversionFailure.h"

/// The reasons why a file was kept unconverted, in both languages side by side. Records contain
/// them.
namespace tavrix::sentences {

inline constexpr Sentence<> keptUnsupported{"такой формат не преобразуется",
                                            "this format is not converted"};
inline constexpr Sentence<> keptRaw{"необработанный снимок (RAW) остаётся как есть",
                                    "a raw picture stays as it is"};
inline constexpr Sentence<> keptSeveral{
    "в файле несколько кадров или страниц, а остался бы один",
    "the file holds several frames or pages, of which one would be left"};
inline constexpr Sentence<> keptColour{"цвета файла не сохранились бы",
                                       "the file's colours would not survive"};
inline constexpr Sentence<> keptTooLarge{"файл слишком велик для преобразования",
                                         "the file is too large to be converted"};
inline constexpr Sentence<> keptMetadataTooLarge{
    "сведения о снимке (Exif, XMP или цветовой профиль) не помещаются в JPEG",
    "the picture's metadata (Exif, XMP or colour profile) would not fit into a JPEG file"};
inline constexpr Sentence<> keptDamaged{"файл повреждён или не дописан",
                                        "the file is damaged or cut short"};
inline constexpr Sentence<> keptWrongResult{"результат не совпал с исходным файлом",
                                            "the result did not match the original"};
inline constexpr Sentence<> keptCrashed{"на этом файле преобразование сломалось",
                                        "the conversion broke down over this file"};
inline constexpr Sentence<> keptTooSlow{"преобразование не уложилось в отведённое время",
                                        "the conversion took longer than it may"};
inline constexpr Sentence<> keptTooMuchMemory{"преобразованию не хватило памяти",
                                              "the conversion ran out of memory"};
inline constexpr Sentence<> keptFailed{
    "преобразование не состоялось; следующий перенос попробует снова",
    "the conversion did not take place; the next transfer tries again"};

/// Returns the sentence for a reason.
inline std::string conversionFailureText(Language language, ConversionFailure failure) {
  switch (failure) {
    case ConversionFailure::unsupported:
      return say(language, keptUnsupported);
    case ConversionFailure::rawPicture:
      return say(language, keptRaw);
    case ConversionFailure::severalPictures:
      return say(language, keptSeveral);
    case ConversionFailure::unsupportedColour:
      return say(language, keptColour);
    case ConversionFailure::tooLarge:
      return say(language, keptTooLarge);
    case ConversionFailure::metadataTooLarge:
      return say(language, keptMetadataTooLarge);
    case ConversionFailure::damagedInput:
      return say(language, keptDamaged);
    case ConversionFailure::wrongResult:
      return say(language, keptWrongResult);
    case ConversionFailure::crashed:
      return say(language, keptCrashed);
    case ConversionFailure::tooSlow:
      return say(language, keptTooSlow);
    case ConversionFailure::tooMuchMemory:
      return say(language, keptTooMuchMemory);
    case ConversionFailure::failed:
      break;
  }
  return say(language, keptFailed);
}

}  // namespace tavrix::sentences
