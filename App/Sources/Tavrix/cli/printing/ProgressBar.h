#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "cli/printing/ProgressLine.h"
#include "transfer/TransferReport.h"

namespace tavrix::cli {

/// The progress of a run on standard error.
class ProgressBar {
 public:
  /// `messages` must outlive this object.
  explicit ProgressBar(const Messages& messages) : line_(messages) {}

  /// `now` is the time of the snapshot and must never decrease.
  void show(const TransferProgressSnapshot& progress, std::chrono::steady_clock::time_point now);

  /// Returns the line without terminal control characters, at most as wide as the terminal.
  std::string text(const TransferProgressSnapshot& progress) const;

 private:
  std::string packingText(const TransferProgressSnapshot& progress) const;
  /// Returns the name of the current file; empty if there is none.
  std::string nameText(const TransferProgressSnapshot& progress) const;
  void addFields(JsonWriter& json, const TransferProgressSnapshot& progress) const;
  void measureSpeed(std::uint64_t bytesDone, std::chrono::steady_clock::time_point now);
  /// Returns nullopt while the speed is unknown.
  std::optional<std::chrono::seconds> timeLeft(const TransferProgressSnapshot& progress) const;

  ProgressLine line_;
  std::optional<std::chrono::steady_clock::time_point> measuredAt_;
  std::uint64_t measuredBytes_ = 0;
  double bytesPerSecond_ = 0;  ///< 0 while unknown
};

}  // namespace tavrix::cli
