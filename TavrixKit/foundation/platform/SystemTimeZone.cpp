#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

#include "foundation/TimeZone.h"

namespace tavrix {
namespace {

/// Returns the end of the path of a zone file, which is an identifier; "" for any other path.
std::string zoneOfPath(const std::string& path) {
  constexpr std::string_view folder = "zoneinfo/";
  const auto at = path.find(folder);
  return at == std::string::npos ? "" : path.substr(at + folder.size());
}

std::string zoneOfLink(const std::string& path) {
  std::error_code error;
  return zoneOfPath(std::filesystem::read_symlink(path, error).string());
}

std::string zoneOfEnvironment() {
  const char* text = std::getenv("TZ");
  return timeZoneOfVariable(text == nullptr ? "" : text).value_or("");
}

std::string zoneOfTimezoneFile() {
  std::ifstream file{"/etc/timezone"};
  std::string id;
  std::getline(file, id);
  return id;
}

}  // namespace

std::optional<std::string> timeZoneOfVariable(std::string_view value) {
  if (value.starts_with(':')) value.remove_prefix(1);
  std::string id{value};
  if (id.starts_with('/')) {
    const std::string path = std::exchange(id, zoneOfPath(id));
    if (id.empty()) id = zoneOfLink(path);
  }
  return TimeZone::load(id) ? std::optional{std::move(id)} : std::nullopt;
}

std::string systemTimeZoneID() {
  for (std::string id : {zoneOfEnvironment(), zoneOfLink("/etc/localtime"), zoneOfTimezoneFile()}) {
    if (TimeZone::load(id)) return id;
  }
  return "UTC";
}

}  // namespace tavrix
