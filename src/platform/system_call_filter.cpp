// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system_call_filter.h"

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <initializer_list>
#include <memory>
#include <system_error>

#include "platform/sanitized.h"

namespace quirn::platform {
namespace {

using Condition = scmp_arg_cmp;

// Calls that reach no further than the process itself, the descriptors that it was handed, and the names of files:
// what stands in a file is a matter of opening it.
constexpr std::array harmlessCalls{
    // Descriptors.
    SCMP_SYS(read), SCMP_SYS(write), SCMP_SYS(readv), SCMP_SYS(writev), SCMP_SYS(pread64), SCMP_SYS(pwrite64),
    SCMP_SYS(preadv), SCMP_SYS(pwritev), SCMP_SYS(preadv2), SCMP_SYS(pwritev2), SCMP_SYS(lseek), SCMP_SYS(close),
    SCMP_SYS(close_range), SCMP_SYS(fstat), SCMP_SYS(getdents64), SCMP_SYS(fadvise64), SCMP_SYS(readahead),
    SCMP_SYS(ftruncate), SCMP_SYS(fallocate), SCMP_SYS(fsync), SCMP_SYS(fdatasync), SCMP_SYS(copy_file_range),
    SCMP_SYS(sendfile), SCMP_SYS(dup), SCMP_SYS(dup2), SCMP_SYS(dup3), SCMP_SYS(poll), SCMP_SYS(ppoll),
    SCMP_SYS(eventfd2), SCMP_SYS(recvmsg), SCMP_SYS(sendmsg),
    // Names.
    SCMP_SYS(stat), SCMP_SYS(lstat), SCMP_SYS(newfstatat), SCMP_SYS(statx), SCMP_SYS(access), SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2), SCMP_SYS(readlink), SCMP_SYS(readlinkat), SCMP_SYS(getcwd),
    // Memory.
    SCMP_SYS(brk), SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(mprotect), SCMP_SYS(madvise), SCMP_SYS(membarrier),
    // Threads and signals of this process.
    SCMP_SYS(futex), SCMP_SYS(futex_waitv), SCMP_SYS(set_robust_list), SCMP_SYS(rseq), SCMP_SYS(set_tid_address),
    SCMP_SYS(sched_yield), SCMP_SYS(sched_getaffinity), SCMP_SYS(getcpu), SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn), SCMP_SYS(sigaltstack), SCMP_SYS(restart_syscall), SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    // What there is to know.
    SCMP_SYS(getpid), SCMP_SYS(gettid), SCMP_SYS(getuid), SCMP_SYS(geteuid), SCMP_SYS(getgid), SCMP_SYS(getegid),
    SCMP_SYS(uname), SCMP_SYS(sysinfo), SCMP_SYS(getrusage), SCMP_SYS(times), SCMP_SYS(getrlimit),
    SCMP_SYS(clock_gettime), SCMP_SYS(clock_getres), SCMP_SYS(clock_nanosleep), SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday), SCMP_SYS(time), SCMP_SYS(getrandom)};

Condition argumentIs(unsigned index, scmp_datum_t value) {
  return {index, SCMP_CMP_EQ, value, 0};
}

Condition bitsAre(unsigned index, scmp_datum_t mask, scmp_datum_t value) {
  return {index, SCMP_CMP_MASKED_EQ, mask, value};
}

class Filter {
 public:
  Filter() : context_(::seccomp_init(SCMP_ACT_ERRNO(EPERM)), &::seccomp_release) {
    if (!context_) throw std::system_error(ENOMEM, std::generic_category(), "seccomp_init");
    check(::seccomp_attr_set(context_.get(), SCMP_FLTATR_CTL_TSYNC, 1));
  }

  void allow(int call, std::initializer_list<Condition> conditions = {}) { add(SCMP_ACT_ALLOW, call, conditions); }
  void answer(int error, int call) { add(SCMP_ACT_ERRNO(static_cast<unsigned>(error)), call, {}); }
  void load() { check(::seccomp_load(context_.get())); }

 private:
  void add(std::uint32_t action, int call, std::initializer_list<Condition> conditions) {
    const auto count = static_cast<unsigned>(conditions.size());
    check(::seccomp_rule_add_array(context_.get(), action, call, count, conditions.begin()));
  }

  static void check(int result) {
    if (result < 0) throw std::system_error(-result, std::generic_category(), "seccomp");
  }

  std::unique_ptr<void, decltype(&::seccomp_release)> context_;
};

// Opening a name without reading it (O_PATH) is a way around Landlock.
void allowOpening(Filter& filter) {
  constexpr auto refused = static_cast<scmp_datum_t>(O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND | O_PATH | O_TMPFILE) &
                           ~static_cast<scmp_datum_t>(O_DIRECTORY);
  filter.allow(SCMP_SYS(openat), {bitsAre(2, refused, O_RDONLY)});
  filter.allow(SCMP_SYS(open), {bitsAre(1, refused, O_RDONLY)});
}

// The limit on data counts private memory alone, so there is no other; and none on huge pages, or that grows by
// itself. Files may be mapped as they are.
void allowMapping(Filter& filter) {
  if (isSanitized) return filter.allow(SCMP_SYS(mmap));
  constexpr scmp_datum_t uncounted = MAP_GROWSDOWN | MAP_HUGETLB;
  filter.allow(SCMP_SYS(mmap), {bitsAre(3, MAP_TYPE | uncounted, MAP_PRIVATE)});
  filter.allow(SCMP_SYS(mmap), {bitsAre(3, MAP_TYPE | MAP_ANONYMOUS | uncounted, MAP_SHARED)});
}

void allowThreads(Filter& filter) {
  constexpr scmp_datum_t thread = CLONE_VM | CLONE_FS | CLONE_FILES | CLONE_SIGHAND | CLONE_THREAD;
  constexpr scmp_datum_t namespaces =
      CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
  filter.allow(SCMP_SYS(clone), {bitsAre(0, thread | namespaces, thread)});
  // Its flags stand in memory, where no filter sees them; without it, the C library falls back to clone().
  filter.answer(ENOSYS, SCMP_SYS(clone3));
  filter.allow(SCMP_SYS(prctl), {argumentIs(0, PR_SET_NAME)});
  // abort() is a signal to oneself.
  filter.allow(SCMP_SYS(tgkill), {argumentIs(0, static_cast<scmp_datum_t>(::getpid()))});
}

// Not those commands that have the kernel signal another process, or that lock.
void allowDescriptorFlags(Filter& filter) {
  for (const int command : {F_DUPFD, F_DUPFD_CLOEXEC, F_GETFD, F_SETFD, F_GETFL})
    filter.allow(SCMP_SYS(fcntl), {argumentIs(1, static_cast<scmp_datum_t>(command))});
  filter.allow(SCMP_SYS(fcntl), {argumentIs(1, F_SETFL), bitsAre(2, O_ASYNC, 0)});
}

}  // namespace

void filterSystemCalls(FileOpening opening) {
  Filter filter;
  // A sanitizer finds out through a pipe whether memory can be read.
  if (isSanitized) filter.allow(SCMP_SYS(pipe));
  if (isSanitized) filter.allow(SCMP_SYS(pipe2));
  for (const int call : harmlessCalls) filter.allow(call);
  if (opening == FileOpening::forReading) allowOpening(filter);
  allowMapping(filter);
  allowThreads(filter);
  allowDescriptorFlags(filter);
  // Limits may be asked for, not set.
  filter.allow(SCMP_SYS(prlimit64), {argumentIs(0, 0), argumentIs(2, 0)});
  // "Is this a terminal?" is asked by many libraries.
  filter.answer(ENOTTY, SCMP_SYS(ioctl));
  filter.load();
}

}  // namespace quirn::platform
