#include "transfer/SafeNames.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "foundation/Digest.h"
#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "media/ParsedName.h"
#include "naming/FolderName.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

/// Returns true if a stem in any letter case is the name of a device.
bool isReserved(std::string_view stem) {
  const std::string name = lowerCased(stem);
  constexpr std::array<std::string_view, 4> devices{"con", "prn", "aux", "nul"};
  if (std::find(devices.begin(), devices.end(), name) != devices.end()) return true;
  const bool isNumbered = name.starts_with("com") || name.starts_with("lpt");
  return isNumbered && name.size() == 4 && name[3] >= '1' && name[3] <= '9';
}

std::string distinct(const std::string& safe, const std::string& planned) {
  const std::string folder = parentPath(safe);
  const std::string name = "~" + sha256Hex(planned).substr(0, 16) + " " + lastPathComponent(safe);
  return folder.empty() ? name : folder + "/" + name;
}

}  // namespace

bool SafeNames::isRefusal(const FileError& error, std::string_view path) {
  if (error.code() == EIO) return safePath(path) != path;
  // ENOENT: shares that find no file of such a name and create none.
  return error.code() == EINVAL || error.code() == EILSEQ || error.code() == ENOENT;
}

std::string SafeNames::safeName(std::string_view name) {
  std::string safe{name};
  const bool endsBadly = name.ends_with('.') || name.ends_with(' ');
  if (endsBadly || FolderName::replacingForbidden(name) != name) {
    const auto stem = BundleBuilder::splitFileName(name).stem;
    const std::string extension = FolderName::sanitise(name.substr(stem.size()));
    const bool hasExtension = name.size() > stem.size() + 1 && extension != FolderName::untitled;
    safe = hasExtension ? FolderName::sanitise(stem) + "." + extension : FolderName::sanitise(name);
    safe = fittingName(std::move(safe));
  }
  const std::size_t stemEnd = std::min(safe.find('.'), safe.size());
  if (isReserved(std::string_view{safe}.substr(0, stemEnd))) safe.insert(stemEnd, "-");
  return safe;
}

std::string SafeNames::safePath(std::string_view path) {
  std::string safe;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    if (begin > 0) safe += '/';
    safe += safeName(path.substr(begin, end - begin));
    begin = end + 1;
  }
  return safe;
}

std::string SafeNames::partPath(const std::string& planned) {
  return tavrix::partPath(distinct(safePath(planned), planned));
}

std::string SafeNames::convertedPartPath(const std::string& planned) {
  return tavrix::convertedPartPath(distinct(safePath(planned), planned));
}

}  // namespace tavrix
