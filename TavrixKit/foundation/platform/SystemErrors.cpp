#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "foundation/Sentences.h"

namespace tavrix::sentences {
namespace {

struct KnownCode {
  int code;
  std::string_view russian;
  std::string_view english;
};

constexpr std::array<KnownCode, 17> knownCodes{{
    {ENOSPC, "нет места на диске", "no space left on the disk"},
    {EDQUOT, "исчерпана дисковая квота", "the disk quota is used up"},
    {EROFS, "диск доступен только для чтения", "the disk is read-only"},
    {EIO, "ошибка ввода-вывода", "an input/output error"},
    {EACCES, "нет прав доступа", "permission denied"},
    {EPERM, "действие не разрешено", "the operation is not permitted"},
    {ENOENT, "нет такого файла или папки", "no such file or folder"},
    {ENOTDIR, "на пути вместо папки лежит файл", "a file stands where a folder should be"},
    {EISDIR, "это папка, а не файл", "it is a folder, not a file"},
    {EEXIST, "такое имя уже занято", "the name is taken already"},
    {ENAMETOOLONG, "имя слишком длинное", "the name is too long"},
    {EXDEV, "ссылка ведёт за пределы папки", "a link leads out of the folder"},
    {ELOOP, "ссылки замкнуты в круг", "links form a loop"},
    {EFBIG, "файл больше, чем позволяет диск или система",
     "the file is larger than the disk or the system allows"},
    {EMFILE, "открыто слишком много файлов (ulimit -n)", "too many files are open (ulimit -n)"},
    {ENFILE, "в системе открыто слишком много файлов", "too many files are open in the system"},
    {EINVAL, "диск не принимает такое имя или файл", "the disk does not take such a name or file"},
}};

}  // namespace

std::string systemErrorText(Language language, int code) {
  const auto* const found =
      std::find_if(knownCodes.begin(), knownCodes.end(),
                   [&](const KnownCode& known) { return known.code == code; });
  if (found != knownCodes.end()) {
    return std::string{language == Language::russian ? found->russian : found->english};
  }
  const std::string message = std::generic_category().message(code);
  return language == Language::russian ? fmt::format("ошибка системы {} ({})", code, message)
                                       : fmt::format("system error {} ({})", code, message);
}

}  // namespace tavrix::sentences
