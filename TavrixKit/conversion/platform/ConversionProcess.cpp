#include "conversion/ConversionProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "conversion/ConversionReport.h"
#include "foundation/files/FileError.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// The interval between two checks for a stop request.
constexpr auto pause = 50ms;

[[noreturn]] void fail(ConversionFailure failure = ConversionFailure::failed) {
  throw ConversionError{failure};
}

/// Duplicates a descriptor to a number above those that the process gets.
FileDescriptor aside(int descriptor) {
  FileDescriptor copy{::fcntl(descriptor, F_DUPFD_CLOEXEC, 16)};
  if (!copy.isOpen()) fail();
  return copy;
}

/// The start conditions of the process: descriptors 3 to 5 and no others of the parent, default
/// signal handling, and a process group of its own. An interrupt from the terminal thus reaches
/// only the parent, which passes it on.
class SpawnSetup {
 public:
  SpawnSetup(const FileDescriptor& source, const FileDescriptor& result,
             const FileDescriptor& report) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawnattr_init(&attributes_);
    for (const int standard : {0, 1, 2})
      posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions_, source.number(), 3);
    posix_spawn_file_actions_adddup2(&actions_, result.number(), 4);
    posix_spawn_file_actions_adddup2(&actions_, report.number(), 5);
    posix_spawn_file_actions_addclosefrom_np(&actions_, 6);
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

std::vector<std::string> argumentsOf(const std::string& program,
                                     const PlannedConversion& conversion,
                                     const ConversionLimits& limits) {
  const auto* const jpeg = std::get_if<planned_conversion::Jpeg>(&conversion);
  return {program,
          std::string{textOf(conversion)},
          std::to_string(jpeg == nullptr ? 0.0 : jpeg->quality),
          std::to_string(limits.memoryBytes),
          std::to_string(limits.processorTime.count()),
          std::to_string(limits.resultBytes)};
}

/// A running process. The destructor kills it unless wait() has returned.
class Child {
 public:
  Child(const std::string& program, const PlannedConversion& conversion,
        const ConversionFiles& files, const ConversionLimits& limits) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) fail();
    report_ = FileDescriptor{ends[0]};
    const FileDescriptor writing{ends[1]};
    const FileDescriptor source = aside(files.source);
    const FileDescriptor result = aside(files.result);
    const FileDescriptor reporting = aside(writing.number());
    const SpawnSetup setup{source, result, reporting};
    std::vector<std::string> words = argumentsOf(program, conversion, limits);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (::posix_spawn(&id_, program.c_str(), setup.actions(), setup.attributes(), arguments.data(),
                      environ) != 0) {
      id_ = -1;
      fail();
    }
  }
  ~Child() {
    if (id_ >= 0) end();
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  int report() const { return report_.number(); }
  /// Returns the status from waitpid(). Kills a process that does not end within a second after its
  /// report.
  int wait() {
    const auto patience = Clock::now() + 1s;
    int status = 0;
    while (::waitpid(id_, &status, WNOHANG) == 0) {
      if (Clock::now() > patience) return end();
      std::this_thread::sleep_for(1ms);
    }
    id_ = -1;
    return status;
  }

 private:
  int end() {
    ::kill(id_, SIGKILL);
    int status = 0;
    while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    id_ = -1;
    return status;
  }

  FileDescriptor report_;
  pid_t id_ = -1;
};

/// Reads the reports of the process until it closes the pipe.
void listen(const Child& child, ConversionReport::Reader& reader, const ConversionLimits& limits,
            const ConversionProgress& progress, const std::stop_token& stop) {
  auto lastSign = Clock::now();
  while (true) {
    if (stop.stop_requested()) fail();
    if (Clock::now() - lastSign > limits.silence) fail(ConversionFailure::tooSlow);
    pollfd waiting{child.report(), POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(pause.count())) <= 0) continue;
    char buffer[4096];
    const ssize_t count = ::read(child.report(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    lastSign = Clock::now();
    const auto fraction = reader.add({buffer, static_cast<std::size_t>(count)});
    if (fraction && progress) progress(*fraction);
  }
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

}  // namespace

ConversionResult ConversionProcess::run(const std::string& program,
                                        const PlannedConversion& conversion,
                                        const ConversionFiles& files,
                                        const ConversionLimits& limits,
                                        const std::string& resultPath,
                                        const ConversionProgress& progress, std::stop_token stop) {
  Child child{program, conversion, files, limits};
  ConversionReport::Reader reader;
  listen(child, reader, limits, progress, stop);
  const int status = child.wait();
  const auto& ending = reader.ending();
  if (ending) {
    if (const auto* const failure = std::get_if<ConversionFailure>(&*ending)) fail(*failure);
    if (const auto* const unwritable = std::get_if<ConversionReport::Unwritable>(&*ending)) {
      if (unwritable->code == EFBIG) fail(ConversionFailure::tooLarge);
      throw FileError{FileOperation::write, resultPath, unwritable->code};
    }
  }
  const bool isDone = ending && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (!isDone) fail(failureOf(status));
  return std::get<ConversionResult>(*ending);
}

}  // namespace tavrix
