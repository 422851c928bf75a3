#pragma once

#include <string_view>

#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// Passes lines of text on to a terminal. Names of files come from phones and cards: characters
/// that would control the terminal, or hide or reorder what it shows, are replaced by U+FFFD. Line
/// feeds and tabs stay. Each call must pass whole characters.
class TerminalSink : public TextSink {
 public:
  explicit TerminalSink(TextSink& terminal) : terminal_(terminal) {}
  void write(std::string_view text) override;

 private:
  TextSink& terminal_;
};

}  // namespace tavrix::cli
