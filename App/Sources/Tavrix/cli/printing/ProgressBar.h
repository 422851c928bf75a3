#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "foundation/Sentence.h"
#include "foundation/Time.h"
#include "foundation/json/JsonWriter.h"
#include "transfer/TransferReport.h"

namespace tavrix::cli {

/// A terminal line with the progress of a run, redrawn about ten times a second.
class ProgressBar {
 public:
  ProgressBar(TextSink& terminal, int columns, Language language)
      : terminal_(terminal), columns_(columns), language_(language) {}
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  /// `now` is the time of the snapshot and must never decrease.
  void show(const TransferProgressSnapshot& progress, std::chrono::steady_clock::time_point now);
  /// Removes the line.
  void clear();

  /// Returns the line without terminal control characters, at most `columns` wide.
  std::string text(const TransferProgressSnapshot& progress) const;

 private:
  std::string packingText(const TransferProgressSnapshot& progress) const;
  /// Appends the name of the current file if there is room.
  std::string withName(std::string line, const TransferProgressSnapshot& progress) const;
  void measureSpeed(std::uint64_t bytesDone, std::chrono::steady_clock::time_point now);

  TextSink& terminal_;
  int columns_;
  Language language_;
  bool isShown_ = false;
  std::optional<std::chrono::steady_clock::time_point> drawnAt_;
  std::optional<std::chrono::steady_clock::time_point> measuredAt_;
  std::uint64_t measuredBytes_ = 0;
  double bytesPerSecond_ = 0;  ///< 0 while unknown
};

/// Returns a bar of 20 columns, filled in proportion to the work done.
std::string barText(std::uint64_t done, std::uint64_t total);
/// Returns for example "0:35", "12:05" or "1:02:03".
std::string durationText(std::chrono::seconds duration);

}  // namespace tavrix::cli
