#include "cli/printing/Messages.h"

#include <fmt/format.h>

#include "cli/printing/TerminalLine.h"

namespace tavrix::cli {

bool Messages::showsProgress() const {
  if (form_.isQuiet || form_.progress == ProgressForm::none) return false;
  return form_.progress == ProgressForm::json || form_.columns;
}

void Messages::write(std::string_view level, const std::string& sentence) const {
  if (form_.progress != ProgressForm::json) return writeLine("tavrix: ", sentence);
  writeObject("message", [&](JsonWriter& json) {
    json.field("level", level).field("text", std::string_view{sentence});
  });
}

void Messages::logLine(std::string_view line) const {
  if (form_.progress != ProgressForm::json) return writeLine("", line);
  writeObject("log", [&](JsonWriter& json) { json.field("text", line); });
}

void Messages::writeLine(std::string_view start, std::string_view text) const {
  const std::lock_guard lock{mutex_};
  // The line may show a progress bar.
  sink_.write(fmt::format("{}{}{}\n", showsProgress() ? clearLine : "", start, text));
}

void Messages::writeOpen(std::string_view text) const {
  const std::lock_guard lock{mutex_};
  sink_.write(text);
}

}  // namespace tavrix::cli
