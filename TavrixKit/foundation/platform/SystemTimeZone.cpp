#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "foundation/TimeZone.h"

namespace tavrix {
namespace {

std::string zoneOfEnvironment() {
  const char* text = std::getenv("TZ");
  std::string id = text == nullptr ? "" : text;
  if (id.starts_with(':')) id.erase(0, 1);
  return id;
}

std::string zoneOfTimezoneFile() {
  std::ifstream file{"/etc/timezone"};
  std::string id;
  std::getline(file, id);
  return id;
}

std::string zoneOfLocaltimeLink() {
  std::error_code error;
  const std::string target = std::filesystem::read_symlink("/etc/localtime", error).string();
  constexpr std::string_view folder = "zoneinfo/";
  const auto at = target.find(folder);
  return at == std::string::npos ? "" : target.substr(at + folder.size());
}

}  // namespace

std::string systemTimeZoneID() {
  for (std::string id : {zoneOfEnvironment(), zoneOfLocaltimeLink(), zoneOfTimezoneFile()}) {
    if (TimeZone::load(id)) return id;
  }
  return "UTC";
}

}  // namespace tavrix
