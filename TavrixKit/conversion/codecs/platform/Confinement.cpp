#include "conversion/codecs/platform/Confinement.h"

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
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
#include <utility>
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

/// Refused as if the file did not exist: libraries look for settings and other files, and go on
/// without them.
constexpr std::array absent{
#ifdef SYS_open
    SYS_open,       SYS_access,  SYS_stat,      SYS_lstat,      SYS_readlink,
#endif
    SYS_openat,     SYS_openat2, SYS_faccessat, SYS_faccessat2, SYS_statx,
    SYS_readlinkat, SYS_getcwd};

/// The calls with which decoders and the C library read and write open files, manage memory and
/// threads, and look at clocks and at themselves.
constexpr std::array allowed{
#ifdef SYS_poll
    SYS_poll,
    SYS_time,
#endif
    SYS_read,
    SYS_readv,
    SYS_pread64,
    SYS_preadv,
    SYS_write,
    SYS_writev,
    SYS_pwrite64,
    SYS_pwritev,
    SYS_lseek,
    SYS_fstat,
    SYS_close,
    SYS_ftruncate,
    SYS_fallocate,
    SYS_fsync,
    SYS_fdatasync,
    SYS_ppoll,
    SYS_recvfrom,
    SYS_recvmsg,
    SYS_sendto,
    SYS_sendmsg,
    SYS_mmap,
    SYS_munmap,
    SYS_mprotect,
    SYS_mremap,
    SYS_madvise,
    SYS_brk,
    SYS_futex,
    SYS_set_robust_list,
    SYS_rseq,
    SYS_membarrier,
    SYS_rt_sigaction,
    SYS_rt_sigprocmask,
    SYS_rt_sigreturn,
    SYS_sigaltstack,
    SYS_restart_syscall,
    SYS_clock_gettime,
    SYS_clock_getres,
    SYS_clock_nanosleep,
    SYS_nanosleep,
    SYS_gettimeofday,
    SYS_times,
    SYS_getrandom,
    SYS_sched_yield,
    SYS_sched_getaffinity,
    SYS_getcpu,
    SYS_sysinfo,
    SYS_uname,
    SYS_getpid,
    SYS_getppid,
    SYS_gettid,
    SYS_getuid,
    SYS_geteuid,
    SYS_getgid,
    SYS_getegid,
    SYS_getrusage,
    SYS_getrlimit,
    SYS_setrlimit,
    SYS_exit,
    SYS_exit_group};

/// A filter of system calls, under construction.
class CallFilter {
 public:
  CallFilter() {
    add(load(offsetof(seccomp_data, arch)));
    add(jump(BPF_JEQ, architecture, 1, 0));
    add(answer(SECCOMP_RET_KILL_PROCESS));
    add(load(offsetof(seccomp_data, nr)));
    // Call numbers of another ABI of the same kernel (x32).
    add(jump(BPF_JGE, 0x40000000U, 0, 1));
    add(answer(SECCOMP_RET_KILL_PROCESS));
  }

  void allow(long call) { answerTo(call, SECCOMP_RET_ALLOW); }
  void refuse(long call, unsigned code) { answerTo(call, SECCOMP_RET_ERRNO | code); }
  /// Allows a call if the low half of an argument has a value.
  void allowIfEqual(long call, unsigned argument, unsigned value) {
    decide(call, argument, jump(BPF_JEQ, value, 0, 1), EPERM);
  }
  /// Allows a call if an argument has one of these bits, else refuses it with `code`.
  void allowIfSet(long call, unsigned argument, unsigned bits, unsigned code) {
    decide(call, argument, jump(BPF_JSET, bits, 0, 1), code);
  }
  /// Refuses everything else, and returns the filter.
  std::vector<sock_filter> finish() && {
    add(answer(SECCOMP_RET_ERRNO | EPERM));
    return std::move(program_);
  }

 private:
  static sock_filter load(std::size_t offset) {
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned>(offset));
  }
  static sock_filter answer(unsigned action) { return BPF_STMT(BPF_RET | BPF_K, action); }
  static sock_filter jump(unsigned condition, unsigned value, unsigned char ifTrue,
                          unsigned char ifFalse) {
    return BPF_JUMP(static_cast<unsigned short>(BPF_JMP | condition | BPF_K), value, ifTrue,
                    ifFalse);
  }
  void add(sock_filter step) { program_.push_back(step); }
  void answerTo(long call, unsigned action) {
    add(jump(BPF_JEQ, static_cast<unsigned>(call), 0, 1));
    add(answer(action));
  }
  void decide(long call, unsigned argument, sock_filter isAllowed, unsigned code) {
    add(jump(BPF_JEQ, static_cast<unsigned>(call), 0, 4));
    add(load(offsetof(seccomp_data, args) + argument * sizeof(__u64)));
    add(isAllowed);
    add(answer(SECCOMP_RET_ALLOW));
    add(answer(SECCOMP_RET_ERRNO | code));
  }

  std::vector<sock_filter> program_;
};

std::vector<sock_filter> filter() {
  CallFilter calls;
  for (const long call : allowed) calls.allow(call);
  for (const long call : absent) calls.refuse(call, ENOENT);
  // The C library asks for the state of an open file with an empty path.
  calls.allowIfSet(SYS_newfstatat, 3, AT_EMPTY_PATH, ENOENT);
  // The C library falls back to clone, whose first argument shows its purpose.
  calls.refuse(SYS_clone3, ENOSYS);
  calls.allowIfSet(SYS_clone, 0, CLONE_THREAD, EPERM);
  // Only this process may be signalled, which is how it aborts, and have its limits changed.
  calls.allowIfEqual(SYS_tgkill, 0, static_cast<unsigned>(::getpid()));
  calls.allowIfEqual(SYS_prlimit64, 0, 0);
  calls.allowIfEqual(SYS_prctl, 0, PR_SET_NAME);
  calls.allowIfEqual(SYS_fcntl, 1, F_GETFL);
  // The undefined-behaviour sanitizer finds out with a pipe which memory is readable.
  if (hasShadowMemory) calls.allow(SYS_pipe2);
  return std::move(calls).finish();
}

/// Forbids every access to the file system by path, where the kernel can. The filter of calls
/// refuses it, too; neither relies on the other.
bool closeFileSystem() {
  landlock_ruleset_attr rules{};
  rules.handled_access_fs = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1;
  const long ruleset = ::syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0);
  if (ruleset < 0) return true;
  const bool isClosed = ::syscall(SYS_landlock_restrict_self, ruleset, 0) == 0;
  ::close(static_cast<int>(ruleset));
  return isClosed;
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
         (hasShadowMemory || limit(RLIMIT_AS, memoryBytes, memoryBytes)) && closeFileSystem() &&
         filterCalls();
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
