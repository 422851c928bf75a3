#include "transfer/FileNames.h"

#include <algorithm>

#include "foundation/Digest.h"
#include "foundation/Text.h"
#include "foundation/Time.h"
#include "foundation/files/AtomicFile.h"
#include "media/ParsedName.h"
#include "transfer/SafeNames.h"

namespace tavrix {
namespace {

using BundleBuilder::splitFileName;

/// Returns the extension with its dot; empty if there is none.
std::string_view dottedExtension(std::string_view name) {
  return name.substr(splitFileName(name).stem.size());
}

/// Returns stem and ending, the stem shortened so that both fit.
std::string joined(std::string_view stem, std::string_view ending) {
  const std::size_t room = longestFileName - std::min(ending.size(), longestFileName);
  return std::string{graphemePrefix(stem, room)}.append(ending);
}

std::string_view folderOf(std::string_view path) {
  const auto slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash + 1);
}

}  // namespace

std::string numberedName(std::string_view name, std::uint64_t number) {
  if (number < 2) return std::string{name};
  const auto parts = splitFileName(name);
  return joined(parts.stem,
                " (" + std::to_string(number) + ")" + std::string{dottedExtension(name)});
}

std::string numberedPath(std::string_view path, std::uint64_t number) {
  const std::string_view folder = folderOf(path);
  return std::string{folder} + numberedName(path.substr(folder.size()), number);
}

std::string damagedPath(std::string_view path, std::uint64_t number) {
  const std::string_view folder = folderOf(path);
  const std::string_view name = path.substr(folder.size());
  std::string ending = " (damaged)";
  if (number > 1) ending += " (" + std::to_string(number) + ")";
  ending += dottedExtension(name);
  return std::string{folder} + joined(splitFileName(name).stem, ending);
}

bool isNumberedForm(std::string_view path, std::string_view base) {
  if (path == base) return true;
  const std::string_view extension = dottedExtension(base.substr(folderOf(base).size()));
  if (path.size() <= extension.size() + 1 || !path.ends_with(extension)) return false;
  const std::string_view stem = path.substr(0, path.size() - extension.size());
  const auto open = stem.rfind(" (");
  if (open == std::string_view::npos || stem.back() != ')') return false;
  const auto number = parseDigits(stem.substr(open + 2, stem.size() - open - 3));
  return number && *number >= 2 && numberedPath(base, static_cast<std::uint64_t>(*number)) == path;
}

std::string unnumberedName(std::string_view name) {
  const std::string_view last = name.substr(folderOf(name).size());
  const std::string_view extension = dottedExtension(last);
  const auto open = name.substr(0, name.size() - extension.size()).rfind(" (");
  if (open == std::string_view::npos) return std::string{name};
  std::string base = std::string{name.substr(0, open)}.append(extension);
  return isNumberedForm(name, base) ? base : std::string{name};
}

std::string withExtension(std::string_view name, std::string_view extension) {
  std::string result{splitFileName(name).stem};
  return result.append(".").append(extension);
}

std::string withExtensionOf(std::string_view name, std::string_view other) {
  const std::string_view folder = folderOf(name);
  const std::string_view last = name.substr(folder.size());
  const std::string_view extension = splitFileName(other).extension;
  return std::string{folder} + (extension.empty()
                                    ? std::string{splitFileName(last).stem}
                                    : withExtension(last, replacingInvalidUtf8(extension)));
}

std::string lowerExtension(std::string_view name) {
  return lowerCased(splitFileName(name).extension);
}

bool isJpegName(std::string_view name) {
  const std::string extension = lowerExtension(name);
  return extension == "jpg" || extension == "jpeg";
}

std::string fittingName(std::string name) {
  if (name.size() <= longestFileName) return name;
  return joined(splitFileName(name).stem, dottedExtension(name));
}

bool isStaged(std::string_view path) {
  return path.starts_with(stagingFolder) && path.substr(stagingFolder.size()).starts_with('/');
}

std::string partPath(const std::string& path) {
  constexpr std::string_view ending = ".part";
  const std::string name = lastPathComponent(path);
  if (name.size() + ending.size() <= longestFileName) return path + std::string{ending};
  // Names that differ only in the part cut off must not share a temporary file.
  const std::string tail = "~" + sha256Hex(name).substr(0, 16) + std::string{ending};
  return std::string{folderOf(path)} + joined(name, tail);
}

std::string convertedPartPath(const std::string& path) { return partPath(path + ".converted"); }

std::vector<std::string> partPathsOf(const std::string& path) {
  return {partPath(path), convertedPartPath(path), SafeNames::partPath(path),
          SafeNames::convertedPartPath(path)};
}

}  // namespace tavrix
