#include "foundation/ProcessLimits.h"

#include <signal.h>
#include <sys/resource.h>

#include <cerrno>

namespace tavrix {

void reportFileSizeLimit() { ::signal(SIGXFSZ, SIG_IGN); }

bool lacksDescriptors(int code) { return code == EMFILE || code == ENFILE; }

unsigned long descriptorLimit() {
  struct rlimit limit{};
  constexpr unsigned long usual = 1024;
  return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : usual;
}

}  // namespace tavrix
