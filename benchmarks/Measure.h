#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tavrix::bench {

/// Returns the time that the work takes, in seconds.
double seconds(const std::function<void()>& work);

/// The best times of two pieces of work measured alternately, so that a busy machine slows both
/// equally.
struct Duel {
  double ours = 0;
  double theirs = 0;
  double ratio() const { return ours / theirs; }
};
Duel duel(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs);

/// Peaks of resident memory, in bytes.
struct PeakMemory {
  double added = 0;           ///< what the work added to that of the process
  double ofLargestChild = 0;  ///< of the largest process that the work started and waited for
};
/// Measures the work in a child process.
PeakMemory peakMemory(const std::function<void()>& work);
/// Returns only what the work added.
double peakBytes(const std::function<void()>& work);

/// Runs a shell command. Ends the program if it fails.
void shell(const std::string& command);

/// A row of the table.
struct Row {
  std::string what;
  std::string ours;
  std::string theirs;
  double ratio = 0;
  double target = 0;
};
/// Prints the row with its verdict.
void print(const Row& row);
/// Returns the number of printed rows that missed their target.
int missedRows();
std::string time(double seconds);

}  // namespace tavrix::bench
