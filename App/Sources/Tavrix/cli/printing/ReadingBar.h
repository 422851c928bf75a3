#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "cli/printing/ProgressLine.h"
#include "device/metadata/MetadataPass.h"

namespace tavrix::cli {

/// The progress of reading a catalogue on standard error.
class ReadingBar {
 public:
  /// `messages` must outlive this object.
  explicit ReadingBar(const Messages& messages) : line_(messages) {}

  /// `now` must never decrease. Shows nothing if there is nothing to read.
  void show(const MetadataPass::Progress& progress, std::chrono::steady_clock::time_point now);
  /// Returns the line without terminal control characters, `elapsed` after the first file.
  std::string text(const MetadataPass::Progress& progress,
                   std::chrono::duration<double> elapsed) const;

 private:
  ProgressLine line_;
  std::optional<std::chrono::steady_clock::time_point> begunAt_;
};

}  // namespace tavrix::cli
