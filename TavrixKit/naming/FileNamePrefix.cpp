#include "naming/FileNamePrefix.h"

#include <algorithm>
#include <array>

#include "naming/FolderName.h"

namespace tavrix {
namespace {

constexpr std::array<std::string_view, 3> modeTexts{"none", "phone", "custom"};

}  // namespace

std::string_view textOf(FileNamePrefixMode mode) {
  return modeTexts.at(static_cast<std::size_t>(mode));
}

std::optional<FileNamePrefixMode> fileNamePrefixModeOf(std::string_view text) {
  const auto found = std::find(modeTexts.begin(), modeTexts.end(), text);
  if (found == modeTexts.end()) return std::nullopt;
  return static_cast<FileNamePrefixMode>(found - modeTexts.begin());
}

std::string fileNamePrefix(FileNamePrefixMode mode, std::string_view customText,
                           std::string_view phoneName) {
  switch (mode) {
    case FileNamePrefixMode::none:
      return {};
    case FileNamePrefixMode::phone:
      return phoneName.empty() ? std::string{} : FolderName::replacingForbidden(phoneName) + ' ';
    case FileNamePrefixMode::custom:
      return FolderName::replacingForbidden(customText);
  }
  return {};
}

}  // namespace tavrix
