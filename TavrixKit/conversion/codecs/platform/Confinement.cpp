#include "conversion/codecs/platform/Confinement.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <vector>

#include "foundation/Sanitizers.h"

namespace tavrix {
namespace {

#if defined(__x86_64__)
constexpr unsigned architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr unsigned architecture = AUDIT_ARCH_AARCH64;
#else
constexpr unsigned architecture = 0;
#endif

bool limit(__rlimit_resource resource, rlim_t soft, rlim_t hard) {
  const rlimit value{soft, hard};
  return ::setrlimit(resource, &value) == 0;
}

sock_filter load(std::size_t offset) {
  return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned>(offset));
}
sock_filter answer(unsigned action) { return BPF_STMT(BPF_RET | BPF_K, action); }

/// Refused as if the file did not exist.
constexpr std::array opening{
#ifdef SYS_open
    SYS_open, SYS_creat,
#endif
    SYS_openat, SYS_openat2};
constexpr std::array forbidden{
#ifdef SYS_fork
    SYS_fork,
    SYS_vfork,
    SYS_unlink,
    SYS_rename,
    SYS_link,
    SYS_symlink,
    SYS_mkdir,
    SYS_rmdir,
    SYS_chmod,
#endif
    SYS_truncate,
    SYS_socket,
    SYS_socketpair,
    SYS_connect,
    SYS_bind,
    SYS_listen,
    SYS_execve,
    SYS_execveat,
    SYS_ptrace,
    SYS_process_vm_readv,
    SYS_process_vm_writev,
    SYS_kill,
    SYS_pidfd_open,
    SYS_unlinkat,
    SYS_renameat,
    SYS_renameat2,
    SYS_linkat,
    SYS_symlinkat,
    SYS_mkdirat,
    SYS_io_uring_setup};

std::vector<sock_filter> filter() {
  std::vector<sock_filter> program{
      load(offsetof(seccomp_data, arch)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 1, 0),
      answer(SECCOMP_RET_KILL_PROCESS),
      load(offsetof(seccomp_data, nr)),
      // Call numbers of another ABI of the same kernel (x32).
      BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 0x40000000U, 0, 1),
      answer(SECCOMP_RET_KILL_PROCESS),
  };
  const auto refuse = [&](long call, unsigned code) {
    program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
    program.push_back(answer(SECCOMP_RET_ERRNO | code));
  };
  for (const long call : opening) refuse(call, ENOENT);
  for (const long call : forbidden) refuse(call, EPERM);
  // The C library falls back to clone, whose first argument shows its purpose.
  refuse(SYS_clone3, ENOSYS);
  program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 3));
  program.push_back(load(offsetof(seccomp_data, args[0])));
  program.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_THREAD, 1, 0));
  program.push_back(answer(SECCOMP_RET_ERRNO | EPERM));
  program.push_back(answer(SECCOMP_RET_ALLOW));
  return program;
}

bool filterCalls() {
  if (architecture == 0) return true;
  std::vector<sock_filter> program = filter();
  const sock_fprog description{static_cast<unsigned short>(program.size()), program.data()};
  if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &description) == 0) return true;
  // On a system without such filters, the other limits remain.
  return errno == EINVAL || errno == ENOSYS;
}

/// Confines everything except the processor time.
bool confine(std::uint64_t memoryBytes, std::uint64_t fileBytes) {
  // Exceeding the limit then makes the write fail, which reports it.
  ::signal(SIGXFSZ, SIG_IGN);
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && limit(RLIMIT_CORE, 0, 0) &&
         limit(RLIMIT_FSIZE, fileBytes, fileBytes) &&
         (hasShadowMemory || limit(RLIMIT_AS, memoryBytes, memoryBytes)) && filterCalls();
}

}  // namespace

bool confineProcess(const ConversionLimits& limits) {
  const auto seconds = static_cast<rlim_t>(limits.processorTime.count());
  return ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && limit(RLIMIT_CPU, seconds, seconds + 1) &&
         confine(limits.memoryBytes, limits.resultBytes);
}

bool confineProcess(const PictureLimits& limits) {
  const auto seconds = static_cast<rlim_t>(limits.lifetime.count());
  return limit(RLIMIT_CPU, seconds, seconds + 1) && confine(limits.memoryBytes, 0);
}

bool grantProcessorTime(std::chrono::seconds time) {
  rlimit current{};
  rusage used{};
  if (::getrlimit(RLIMIT_CPU, &current) != 0 || ::getrusage(RUSAGE_SELF, &used) != 0) return false;
  // The begun seconds of both kinds of time count as a whole one each.
  const auto seconds = used.ru_utime.tv_sec + used.ru_stime.tv_sec + 2 + time.count();
  return limit(RLIMIT_CPU, std::min(static_cast<rlim_t>(seconds), current.rlim_max),
               current.rlim_max);
}

}  // namespace tavrix
