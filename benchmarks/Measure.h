#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tavrix::bench {

/// Seconds that a piece of work takes.
double seconds(const std::function<void()>& work);

/// Two pieces of work measured in turns, so that a busy machine slows both alike: the best time of
/// each.
struct Duel {
  double ours = 0;
  double theirs = 0;
  double ratio() const { return ours / theirs; }
};
Duel duel(int rounds, const std::function<void()>& ours, const std::function<void()>& theirs);

/// The peak of resident memory that `work` adds, in bytes, measured in a process of its own.
double peakBytes(const std::function<void()>& work);

/// Runs a shell command; ends the program when it fails.
void shell(const std::string& command);

/// One line of the table.
struct Row {
  std::string what;
  std::string ours;
  std::string theirs;
  double ratio = 0;
  double target = 0;
};
/// Prints the row with its verdict and remembers whether the target was met.
void print(const Row& row);
std::string time(double seconds);

}  // namespace tavrix::bench
