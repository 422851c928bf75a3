// Asks logind through systemd-inhibit, which needs no library. The lock is held by a process whose
// standard input is a pipe from this program: if this program dies, the lock ends with it.

#include "services/SleepInhibitor.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace tavrix {
namespace {

class LogindInhibitor : public SleepInhibitor {
 public:
  ~LogindInhibitor() override { end(); }

  void hold(const std::string& reason) override {
    if (holder_ > 0) return;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
    holder_ = start(ends[0], reason);
    close(ends[0]);
    if (holder_ > 0) {
      pipe_ = ends[1];
    } else {
      close(ends[1]);
    }
  }
  void release() override { end(); }

 private:
  /// Starts the process that holds the lock. Returns 0 if there is no such program.
  static pid_t start(int input, const std::string& reason) {
    std::array<std::string, 6> words{"systemd-inhibit", "--what=sleep:idle", "--mode=block",
                                     "--who=Tavrix",    "--why=" + reason,   "cat"};
    std::array<char*, 7> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i) arguments[i] = words[i].data();
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    // A group of its own: an interrupt in the terminal ends the work, which then ends the lock.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK);
    pid_t process = 0;
    const int fault =
        posix_spawnp(&process, "systemd-inhibit", &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return fault == 0 ? process : 0;
  }

  void end() {
    if (holder_ <= 0) return;
    close(pipe_);
    // It may still be waiting for an answer of the system.
    kill(-holder_, SIGTERM);
    waitpid(holder_, nullptr, 0);
    holder_ = 0;
  }

  pid_t holder_ = 0;
  int pipe_ = -1;
};

}  // namespace

std::unique_ptr<SleepInhibitor> openSleepInhibitor() { return std::make_unique<LogindInhibitor>(); }

}  // namespace tavrix
