#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "foundation/Sentence.h"
#include "foundation/Time.h"
#include "foundation/json/JsonWriter.h"
#include "transfer/TransferReport.h"

namespace tavrix::cli {

/// One line of a terminal that tells how far a run is, drawn again about ten times a second.
class ProgressBar {
 public:
  ProgressBar(TextSink& terminal, int columns, Language language)
      : terminal_(terminal), columns_(columns), language_(language) {}
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  /// `now` is the moment of the snapshot and never goes back.
  void show(const TransferProgressSnapshot& progress, std::chrono::steady_clock::time_point now);
  /// Takes the line away.
  void clear();

  /// The line's text without the terminal's control characters, at most `columns` wide.
  std::string text(const TransferProgressSnapshot& progress) const;

 private:
  std::string packingText(const TransferProgressSnapshot& progress) const;
  /// The line with the name of the file in hand, as far as there is room.
  std::string withName(std::string line, const TransferProgressSnapshot& progress) const;
  void measureSpeed(std::uint64_t bytesDone, std::chrono::steady_clock::time_point now);

  TextSink& terminal_;
  int columns_;
  Language language_;
  bool isShown_ = false;
  std::optional<std::chrono::steady_clock::time_point> drawnAt_;
  std::optional<std::chrono::steady_clock::time_point> measuredAt_;
  std::uint64_t measuredBytes_ = 0;
  double bytesPerSecond_ = 0;  ///< 0 while it is not known
};

/// A bar of 20 columns, filled as far as the work is done.
std::string barText(std::uint64_t done, std::uint64_t total);
/// "0:35", "12:05", "1:02:03".
std::string durationText(std::chrono::seconds duration);

}  // namespace tavrix::cli
