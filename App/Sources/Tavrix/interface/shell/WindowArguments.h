#pragma once

#include <QSize>
#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/Sentence.h"

namespace tavrix::window {

/// The arguments of the program.
struct WindowArguments {
  std::optional<std::string> source;
  std::optional<std::string> destination;
  std::optional<Language> language;
  std::optional<bool> isDark;
  bool wantsHelp = false;
  bool wantsVersion = false;

  // For developers: the program paints its window into a file and ends.
  std::optional<std::string> picture;  ///< path of the PNG file to write
  std::optional<QSize> size;           ///< of the window
  std::optional<std::string> screens;  ///< folder with QML files to use in place of the program's
  std::chrono::milliseconds delay{0};  ///< before the picture, so that work is under way in it
  bool endsAtFirstFrame = false;
  std::optional<std::string> state;  ///< to bring the window into, see Stage
  std::vector<std::string> actions;  ///< statements of QML to carry out before, in the window
};

/// An argument that the program does not know, or whose value is missing or wrong.
struct UnknownArgument {
  std::string text;
};

/// Reads the arguments without the name of the program.
std::variant<WindowArguments, UnknownArgument> readArguments(
    const std::vector<std::string>& arguments);

}  // namespace tavrix::window
