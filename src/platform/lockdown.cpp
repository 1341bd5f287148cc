// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/lockdown.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <span>
#include <stdexcept>

#include "platform/file_descriptor.h"
#include "platform/sanitized.h"
#include "platform/system_call_filter.h"

namespace quirn::platform {
namespace {

constexpr unsigned firstClosed = 5;  // standard streams and connections stand before it

// landlock.h of the build machine may be older than the kernel that the program meets.
constexpr std::uint64_t rightsOfFirstVersion = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1;
constexpr std::uint64_t rightToRefer = 1ULL << 13;        // version 2: moving between folders
constexpr std::uint64_t rightToTruncate = 1ULL << 14;     // version 3
constexpr std::uint64_t rightsToTcp = 3;                  // version 4: bind, connect
constexpr std::uint64_t rightToDeviceCalls = 1ULL << 15;  // version 5
constexpr std::uint64_t scopes = 3;                       // version 6: abstract sockets, signals

struct Ruleset {
  std::uint64_t files = 0;
  std::uint64_t network = 0;
  std::uint64_t scoped = 0;
};

// Read as far as they are there: libraries and what they load, fonts, MIME types, time zones.
constexpr std::array readablePaths{"/usr/lib",
                                   "/lib",
                                   "/usr/lib64",
                                   "/lib64",
                                   "/usr/share",
                                   "/etc/fonts",
                                   "/etc/localtime",
                                   "/etc/ld.so.cache",
                                   "/var/cache/fontconfig"};

int landlockVersion() {
  return static_cast<int>(::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION));
}

Ruleset rulesetOf(int version) {
  Ruleset ruleset{rightsOfFirstVersion, 0, 0};
  if (version >= 2) ruleset.files |= rightToRefer;
  if (version >= 3) ruleset.files |= rightToTruncate;
  if (version >= 4) ruleset.network = rightsToTcp;
  if (version >= 5) ruleset.files |= rightToDeviceCalls;
  if (version >= 6) ruleset.scoped = scopes;
  return ruleset;
}

std::size_t sizeOfRuleset(int version) {
  return sizeof(std::uint64_t) * (version >= 6 ? 3 : version >= 4 ? 2 : 1);
}

void allowReading(int ruleset, const char* path) {
  const FileDescriptor place(::open(path, O_PATH | O_CLOEXEC));
  if (!place) return;
  struct stat status{};
  if (::fstat(place.number(), &status) != 0) throwErrno("fstat");
  landlock_path_beneath_attr rule{};
  rule.parent_fd = place.number();
  rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
  if (S_ISDIR(status.st_mode)) rule.allowed_access |= LANDLOCK_ACCESS_FS_READ_DIR;
  if (::syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) != 0)
    throwErrno("landlock_add_rule");
}

void restrictFiles(int version) {
  const Ruleset wanted = rulesetOf(version);
  const FileDescriptor ruleset(
      static_cast<int>(::syscall(SYS_landlock_create_ruleset, &wanted, sizeOfRuleset(version), 0)));
  if (!ruleset) throwErrno("landlock_create_ruleset");
  for (const char* const path : readablePaths) allowReading(ruleset.number(), path);
  if (::syscall(SYS_landlock_restrict_self, ruleset.number(), 0) != 0) throwErrno("landlock_restrict_self");
}

// The kernel restricts the calling thread, and those that it begins from then on.
void requireOneThread() {
  if (hasSanitizerThread) return;
  if (std::ranges::distance(std::filesystem::directory_iterator("/proc/self/task")) != 1)
    throw std::runtime_error("a library began a thread before the lock-down");
}

void limitForGood(__rlimit_resource resource, rlim_t most) {
  rlimit limit{};
  if (::getrlimit(resource, &limit) != 0) throwErrno("getrlimit");
  limit.rlim_max = std::min(limit.rlim_max, most);
  limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max);
  if (::setrlimit(resource, &limit) != 0) throwErrno("setrlimit");
}

void setLimits() {
  constexpr rlim_t mostDescriptors = 4096;
  constexpr rlim_t mostThreads = 8192;  // of the person's whole desktop, as the kernel counts them
  constexpr rlim_t mostStack = 8 << 20;
  limitForGood(RLIMIT_CORE, 0);
  limitForGood(RLIMIT_NOFILE, mostDescriptors);
  limitForGood(RLIMIT_NPROC, mostThreads);
  limitForGood(RLIMIT_STACK, mostStack);
  limitForGood(RLIMIT_MEMLOCK, 0);
  limitForGood(RLIMIT_MSGQUEUE, 0);
}

// When the machine runs out of memory, a worker is the first to go.
void volunteer() {
  const FileDescriptor file(::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC));
  constexpr std::array most{'1', '0', '0', '0'};
  if (file) writeAll(file.number(), std::as_bytes(std::span(most)));
}

}  // namespace

void lockDown() {
  requireOneThread();
  volunteer();
  ::close_range(firstClosed, ~0U, 0);
  setLimits();
  if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) throwErrno("no_new_privs");
  if (::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) != 0) throwErrno("dumpable");
  const int version = landlockVersion();
  if (version > 0) restrictFiles(version);
  // Where the kernel can't tell files apart, none is opened.
  filterSystemCalls(version > 0 ? FileOpening::forReading : FileOpening::refused);
}

std::string lockDownGap() {
  if (landlockVersion() > 0) return {};
  return "This kernel has no Landlock: files from strangers are read without fonts and other tables of the system.";
}

}  // namespace quirn::platform
