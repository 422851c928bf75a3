// Runs the benchmark of the window. Ends with status 3 if a row missed its target.

#include <fmt/format.h>

#include <filesystem>

#include "Benches.h"
#include "Measure.h"

int main(int /*count*/, char** values) {
  const auto folder = std::filesystem::absolute(values[0]).parent_path() / "window-work";
  fmt::print("{:<76} {:>12} {:>12} {:>8} {:>8}\n", "ours : theirs", "ours", "theirs", "ratio",
             "at most");
  tavrix::bench::benchWindow(folder.string());
  std::filesystem::remove_all(folder);
  const int missed = tavrix::bench::missedRows();
  if (missed > 0) fmt::print("{} rows missed their target.\n", missed);
  constexpr int missedStatus = 3;
  return missed > 0 ? missedStatus : 0;
}
