#include "conversion/codecs/platform/Confinement.h"

#include <gmock/gmock.h>
#include <sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace tavrix {
namespace {

struct Call {
  const char* name;
  long number;
  int refusal = EPERM;
};

/// Calls that a decoder taken over by a hostile file would like to make.
constexpr Call forbidden[] = {
    {"openat", SYS_openat, ENOENT},
    {"openat2", SYS_openat2, ENOENT},
    {"memfd_create", SYS_memfd_create},
    {"name_to_handle_at", SYS_name_to_handle_at},
    {"open_by_handle_at", SYS_open_by_handle_at},
    {"fchmod", SYS_fchmod},
    {"fchmodat", SYS_fchmodat},
    {"fchown", SYS_fchown},
    {"fchownat", SYS_fchownat},
    {"mknodat", SYS_mknodat},
    {"utimensat", SYS_utimensat},
    {"setxattr", SYS_setxattr},
    {"fsetxattr", SYS_fsetxattr},
    {"removexattr", SYS_removexattr},
    {"truncate", SYS_truncate},
    {"unlinkat", SYS_unlinkat},
    {"renameat2", SYS_renameat2},
    {"linkat", SYS_linkat},
    {"symlinkat", SYS_symlinkat},
    {"mkdirat", SYS_mkdirat},
    {"getdents64", SYS_getdents64},
    {"chdir", SYS_chdir},
    {"chroot", SYS_chroot},
    {"mount", SYS_mount},
    {"umount2", SYS_umount2},
    {"pivot_root", SYS_pivot_root},
    {"unshare", SYS_unshare},
    {"setns", SYS_setns},
    {"socket", SYS_socket},
    {"socketpair", SYS_socketpair},
    {"connect", SYS_connect},
    {"bind", SYS_bind},
    {"listen", SYS_listen},
    {"accept4", SYS_accept4},
    {"execve", SYS_execve},
    {"execveat", SYS_execveat},
    {"clone3", SYS_clone3, ENOSYS},
    {"ptrace", SYS_ptrace},
    {"process_vm_readv", SYS_process_vm_readv},
    {"process_vm_writev", SYS_process_vm_writev},
    {"pidfd_open", SYS_pidfd_open},
    {"pidfd_getfd", SYS_pidfd_getfd},
    {"kill", SYS_kill},
    {"tkill", SYS_tkill},
    {"tgkill", SYS_tgkill},
    {"rt_sigqueueinfo", SYS_rt_sigqueueinfo},
    {"rt_tgsigqueueinfo", SYS_rt_tgsigqueueinfo},
    {"prlimit64", SYS_prlimit64},
    {"setpriority", SYS_setpriority},
    {"sched_setaffinity", SYS_sched_setaffinity},
    {"setuid", SYS_setuid},
    {"setgroups", SYS_setgroups},
    {"capset", SYS_capset},
    {"keyctl", SYS_keyctl},
    {"bpf", SYS_bpf},
    {"perf_event_open", SYS_perf_event_open},
    {"io_uring_setup", SYS_io_uring_setup},
    {"userfaultfd", SYS_userfaultfd},
    {"fanotify_init", SYS_fanotify_init},
    {"inotify_init1", SYS_inotify_init1},
    {"ioctl", SYS_ioctl},
    {"dup3", SYS_dup3},
    {"reboot", SYS_reboot},
    {"init_module", SYS_init_module},
    {"swapon", SYS_swapon},
    {"settimeofday", SYS_settimeofday},
};

/// Confines this process and makes the calls. Writes the names of those that are not refused.
[[noreturn]] void makeCalls(int report, uid_t user) {
  if (user != 0 && ::setuid(user) != 0) ::_exit(2);
  if (!confineProcess(ConversionLimits{})) ::_exit(3);
  const auto write = [&](const std::string& text) {
    if (::write(report, text.data(), text.size()) < 0) ::_exit(4);
  };
  for (const Call& call : forbidden) {
    // With arguments that make the call fail harmlessly in another way if it is let through.
    const long result = ::syscall(call.number, -1, -1, -1, -1, -1, -1);
    if (result != -1 || errno != call.refusal) write(std::string{call.name} + " ");
  }
  if (::syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0) != -1 || errno != EPERM) write("fork ");
  write("end");
  ::_exit(0);
}

std::string notRefused(uid_t user) {
  int ends[2];
  if (::pipe(ends) != 0) return "no pipe";
  const pid_t child = ::fork();
  if (child == 0) makeCalls(ends[1], user);
  ::close(ends[1]);
  std::string text;
  char buffer[256];
  for (ssize_t count = 0; (count = ::read(ends[0], buffer, sizeof buffer)) > 0;)
    text.append(buffer, static_cast<std::size_t>(count));
  ::close(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  return text + (status == 0 ? "" : " status " + std::to_string(status));
}

TEST(Confinement, everyForbiddenCall_isRefused) {
  EXPECT_EQ(notRefused(::getuid()), "end");
  constexpr uid_t nobody = 65534;
  if (::getuid() != 0) return;
  EXPECT_EQ(notRefused(nobody), "end");
}

}  // namespace
}  // namespace tavrix
