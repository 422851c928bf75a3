#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "device/metadata/MetadataPass.h"
#include "foundation/Sentence.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// A terminal line with the progress of reading a catalogue, redrawn about ten times a second.
class ReadingBar {
 public:
  ReadingBar(TextSink& terminal, int columns, Language language)
      : terminal_(terminal), columns_(columns), language_(language) {}
  ReadingBar(const ReadingBar&) = delete;
  ReadingBar& operator=(const ReadingBar&) = delete;
  ~ReadingBar();

  /// `now` must never decrease. Shows nothing if there is nothing to read.
  void show(const MetadataPass::Progress& progress, std::chrono::steady_clock::time_point now);
  /// Returns the line without terminal control characters, `elapsed` after the first file.
  std::string text(const MetadataPass::Progress& progress,
                   std::chrono::duration<double> elapsed) const;

 private:
  TextSink& terminal_;
  int columns_;
  Language language_;
  bool isShown_ = false;
  std::optional<std::chrono::steady_clock::time_point> begunAt_;
  std::optional<std::chrono::steady_clock::time_point> drawnAt_;
};

}  // namespace tavrix::cli
