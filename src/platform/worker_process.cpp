// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/worker_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/sanitized.h"

namespace quirn::platform {
namespace {

// Where a worker finds its two connections.
constexpr int messagesNumber = 3;
constexpr int controlNumber = 4;

// What a worker needs to name hours and sort words as the person does, and what a sanitizer is told.
constexpr std::array keptVariables{"TZ", "LANG", "LC_ALL", "LC_CTYPE"};
constexpr std::array sanitizerVariables{"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"};

void check(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

// A copy above the numbers that the worker's descriptors get, so that placing one can't overwrite the other.
FileDescriptor movedUp(int descriptor) {
  FileDescriptor copy(::fcntl(descriptor, F_DUPFD_CLOEXEC, controlNumber + 1));
  if (!copy) throwErrno("fcntl");
  return copy;
}

class FileActions {
 public:
  FileActions() { check(::posix_spawn_file_actions_init(&actions_), "posix_spawn_file_actions_init"); }
  ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  void place(int descriptor, int number) {
    check(::posix_spawn_file_actions_adddup2(&actions_, descriptor, number), "adddup2");
  }
  void openNothing(int number) {
    check(::posix_spawn_file_actions_addopen(&actions_, number, "/dev/null", O_RDWR, 0), "addopen");
  }
  void closeFrom(int number) { check(::posix_spawn_file_actions_addclosefrom_np(&actions_, number), "addclosefrom"); }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

// Signals as a new program expects them, whatever this process ignores or blocks. Those of the terminal don't reach
// the worker: the front end decides what becomes of a run.
class SpawnAttributes {
 public:
  SpawnAttributes() {
    check(::posix_spawnattr_init(&attributes_), "posix_spawnattr_init");
    sigset_t signals;
    ::sigfillset(&signals);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    ::sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGHUP, SIGQUIT, SIGTERM, SIGXFSZ}) ::sigaddset(&signals, signal);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  }
  ~SpawnAttributes() { ::posix_spawnattr_destroy(&attributes_); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;

  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

// Tells a worker from the program that started it.
constexpr const char* workerVariable = "QUIRN_WORKER";

std::vector<std::string> keptEnvironment() {
  std::vector<std::string> kept;
  const auto keep = [&kept](const char* name) {
    if (const char* const value = std::getenv(name)) kept.push_back(std::string(name) + "=" + value);
  };
  std::ranges::for_each(keptVariables, keep);
  if (isSanitized) std::ranges::for_each(sanitizerVariables, keep);
  return kept;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

pid_t spawn(const std::filesystem::path& program, const std::string& kind, int messages, int control) {
  const FileDescriptor highMessages = movedUp(messages);
  const FileDescriptor highControl = movedUp(control);
  FileActions actions;
  actions.openNothing(STDIN_FILENO);
  actions.openNothing(STDOUT_FILENO);
  // What a sanitizer finds is worth more than silence.
  if (!isSanitized) actions.openNothing(STDERR_FILENO);
  actions.place(highMessages.number(), messagesNumber);
  actions.place(highControl.number(), controlNumber);
  actions.closeFrom(controlNumber + 1);
  const SpawnAttributes attributes;
  std::vector<std::string> words{"quirn", "--worker", kind};
  std::vector<std::string> environment = keptEnvironment();
  environment.push_back(std::string(workerVariable) + "=1");
  pid_t child = -1;
  check(::posix_spawn(&child, program.c_str(), actions.get(), attributes.get(), pointersTo(words).data(),
                      pointersTo(environment).data()),
        "posix_spawn");
  return child;
}

void limitSoftly(pid_t process, __rlimit_resource resource, std::int64_t value) {
  rlimit limit{};
  if (::prlimit(process, resource, nullptr, &limit) != 0) return;
  limit.rlim_cur = std::min(static_cast<rlim_t>(value), limit.rlim_max);
  ::prlimit(process, resource, &limit, nullptr);
}

}  // namespace

WorkerProcess::WorkerProcess(const std::filesystem::path& program, const std::string& kind)
    : messages_(FileDescriptor()), control_(FileDescriptor()) {
  // A program that doesn't know what a worker is would do its own work instead, and start workers without end.
  if (std::getenv(workerVariable) != nullptr) throw std::system_error(EPERM, std::generic_category(), "in a worker");
  auto [ownMessages, theirMessages] = MessageSocket::pair();
  auto [ownControl, theirControl] = MessageSocket::pair();
  messages_ = std::move(ownMessages);
  control_ = std::move(ownControl);
  child_ = spawn(program, kind, theirMessages.descriptor(), theirControl.descriptor());
}

WorkerProcess::~WorkerProcess() {
  if (child_ <= 0) return;
  ::kill(child_, SIGKILL);
  while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void WorkerProcess::tell(std::uint32_t number) const {
  ::send(control_.descriptor(), &number, sizeof number, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void WorkerProcess::limit(const WorkerLimits& limits) {
  if (limits == limits_) return;
  limits_ = limits;
  // A sanitizer keeps its records in far more memory than the program it watches.
  if (!isSanitized) limitSoftly(child_, RLIMIT_DATA, limits.memory);
  limitSoftly(child_, RLIMIT_FSIZE, limits.outputSize);
  limitSoftly(child_, RLIMIT_CPU, limits.processorTime.count());
}

WorkerConnection::WorkerConnection(FileDescriptor messages, FileDescriptor control)
    : messages_(std::move(messages)), control_(std::move(control)) {}

WorkerConnection WorkerConnection::inherited() {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  int type = 0;
  socklen_t size = sizeof type;
  if (::getsockopt(messagesNumber, SOL_SOCKET, SO_TYPE, &type, &size) != 0) throwErrno("no connection");
  if (type != SOCK_SEQPACKET || ::fcntl(controlNumber, F_GETFD) < 0) check(EBADF, "no connection");
  return {FileDescriptor(messagesNumber), FileDescriptor(controlNumber)};
}

std::optional<std::uint32_t> WorkerConnection::hear() const {
  std::uint32_t number = 0;
  ssize_t count = 0;
  do {
    count = ::read(control_.number(), &number, sizeof number);
  } while (count < 0 && errno == EINTR);
  return count == sizeof number ? std::optional(number) : std::nullopt;
}

}  // namespace quirn::platform
