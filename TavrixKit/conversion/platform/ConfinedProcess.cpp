#include "conversion/platform/ConfinedProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "foundation/ProcessLimits.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

constexpr int firstDescriptor = 3;

/// Duplicates a descriptor to a number above those that the process gets.
FileDescriptor aside(int descriptor) {
  FileDescriptor copy{::fcntl(descriptor, F_DUPFD_CLOEXEC, 16)};
  if (!copy.isOpen() && lacksDescriptors(errno)) throw FileError{FileOperation::open, "", errno};
  if (!copy.isOpen()) throw ConversionError{ConversionFailure::failed};
  return copy;
}

/// The start conditions of the process.
class SpawnSetup {
 public:
  explicit SpawnSetup(const std::vector<FileDescriptor>& descriptors) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawnattr_init(&attributes_);
    for (const int standard : {0, 1, 2})
      posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0);
    int number = firstDescriptor;
    for (const FileDescriptor& descriptor : descriptors)
      posix_spawn_file_actions_adddup2(&actions_, descriptor.number(), number++);
    posix_spawn_file_actions_addclosefrom_np(&actions_, number);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setpgroup(&attributes_, 0);
    posix_spawnattr_setflags(
        &attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnSetup() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;

  const posix_spawn_file_actions_t* actions() const { return &actions_; }
  const posix_spawnattr_t* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

ConfinedProcess::ConfinedProcess(const std::string& program,
                                 const std::vector<std::string>& arguments,
                                 std::span<const int> descriptors) {
  std::vector<FileDescriptor> copies;
  for (const int descriptor : descriptors) copies.push_back(aside(descriptor));
  const SpawnSetup setup{copies};
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  if (::posix_spawn(&id_, program.c_str(), setup.actions(), setup.attributes(), pointers.data(),
                    environ) != 0) {
    id_ = -1;
    throw ConversionError{ConversionFailure::failed};
  }
}

ConfinedProcess::~ConfinedProcess() {
  if (id_ >= 0) end();
}

bool ConfinedProcess::isRunning() {
  if (id_ >= 0 && ::waitpid(id_, &status_, WNOHANG) != 0) id_ = -1;
  return id_ >= 0;
}

std::chrono::nanoseconds ConfinedProcess::processorTime() const {
  clockid_t clock{};
  timespec used{};
  if (id_ < 0 || ::clock_getcpuclockid(id_, &clock) != 0 || ::clock_gettime(clock, &used) != 0)
    return {};
  return std::chrono::seconds{used.tv_sec} + std::chrono::nanoseconds{used.tv_nsec};
}

int ConfinedProcess::wait(std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (isRunning()) {
    if (std::chrono::steady_clock::now() > deadline) return end();
    std::this_thread::sleep_for(std::chrono::milliseconds{1});
  }
  return status_;
}

int ConfinedProcess::end() {
  ::kill(id_, SIGKILL);
  while (::waitpid(id_, &status_, 0) < 0 && errno == EINTR) {
  }
  id_ = -1;
  return status_;
}

ConversionFailure failureOf(int status) {
  if (!WIFSIGNALED(status)) return ConversionFailure::crashed;
  switch (WTERMSIG(status)) {
    case SIGXCPU:
      return ConversionFailure::tooSlow;
    case SIGKILL:
    case SIGTERM:
    case SIGINT:
    case SIGHUP:
      // Sent from outside: by the user, or by a system that is short of memory.
      return ConversionFailure::failed;
    default:
      return ConversionFailure::crashed;
  }
}

}  // namespace tavrix
