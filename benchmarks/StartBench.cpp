// Starting the program, beside a program that does nothing. TAVRIX_PHONE names a folder with a
// snapshot of a phone, whose folders are listed as well.

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "Benches.h"
#include "Measure.h"

namespace tavrix::bench {
namespace {

/// Runs a program without a shell, and without output. Throws if it fails.
void run(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t id = 0;
  int status = 0;
  const int error =
      posix_spawn(&id, words[0].c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0 || waitpid(id, &status, 0) != id || status != 0)
    throw std::runtime_error{words[0] + " failed"};
}

/// Prints a row for a call of the program. `most` is the allowed time as a multiple of the
/// yardstick's, which takes about a millisecond.
void measure(const std::string& what, const std::vector<std::string>& words, double most) {
  constexpr int rounds = 25;
  const Duel starts = duel(rounds, [&] { run(words); }, [] { run({"/bin/true"}); });
  print({what + " : /bin/true", time(starts.ours), time(starts.theirs), starts.ratio(), most});
}

}  // namespace

void benchStart(const std::string& folder) {
  std::filesystem::create_directories(folder);
  measure("tavrix --version", {TAVRIX_PROGRAM, "--version"}, 15);
  const char* const phone = std::getenv("TAVRIX_PHONE");
  if (phone == nullptr) {
    fmt::print("start: TAVRIX_PHONE names no folder with a snapshot\n");
    return;
  }
  measure("tavrix groups", {TAVRIX_PROGRAM, "groups", phone, "--state", folder}, 40);
  std::filesystem::remove_all(folder);
}

}  // namespace tavrix::bench
