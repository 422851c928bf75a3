#include "interface/shell/WindowArguments.h"

#include <QString>

#include "interface/stage/Stage.h"

namespace tavrix::window {
namespace {

std::optional<QSize> sizeIn(const std::string& text) {
  const QStringList sides = QString::fromStdString(text).split(QLatin1Char{'x'});
  const QSize size = sides.size() == 2 ? QSize{sides[0].toInt(), sides[1].toInt()} : QSize{};
  return size.isEmpty() ? std::nullopt : std::optional{size};
}

/// Takes an option with its value. Returns false if there is no such option or value.
bool take(WindowArguments& taken, const std::string& option, const std::string& value) {
  if (option == "--destination") {
    taken.destination = value;
  } else if (option == "--picture") {
    taken.picture = value;
  } else if (option == "--screens") {
    taken.screens = value;
  } else if (option == "--do") {
    taken.actions.push_back(value);
  } else if (option == "--delay") {
    taken.delay = std::chrono::milliseconds{QString::fromStdString(value).toInt()};
  } else if (option == "--state" && Stage::isKnown(value)) {
    taken.state = value;
  } else if (option == "--size") {
    taken.size = sizeIn(value);
    return taken.size.has_value();
  } else if (option == "--language" && (value == "ru" || value == "en")) {
    taken.language = value == "ru" ? Language::russian : Language::english;
  } else if (option == "--appearance" && (value == "light" || value == "dark")) {
    taken.isDark = value == "dark";
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::variant<WindowArguments, UnknownArgument> readArguments(
    const std::vector<std::string>& arguments) {
  WindowArguments taken;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--help" || argument == "--version") {
      (argument == "--help" ? taken.wantsHelp : taken.wantsVersion) = true;
    } else if (argument == "--first-frame") {
      taken.endsAtFirstFrame = true;
    } else if (!argument.starts_with("--")) {
      if (taken.source) return UnknownArgument{argument};
      taken.source = argument;
    } else {
      const std::size_t equals = argument.find('=');
      const bool isJoined = equals != std::string::npos;
      if (!isJoined && i + 1 == arguments.size()) return UnknownArgument{argument};
      const std::string value = isJoined ? argument.substr(equals + 1) : arguments[++i];
      if (!take(taken, argument.substr(0, equals), value)) return UnknownArgument{argument};
    }
  }
  return taken;
}

}  // namespace tavrix::window
