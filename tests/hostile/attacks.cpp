// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "hostile/attacks.h"

#include <fcntl.h>
#include <linux/keyctl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <thread>
#include <vector>

#include "core/box/protocol.h"
#include "core/operation_error.h"
#include "platform/message_socket.h"

namespace quirn::hostile {
namespace {

using box::Ask;
using box::MessageWriter;

struct Target {
  const std::string& argument;
  const InputFile& input;
  OperationContext& context;

  const char* path() const { return argument.c_str(); }
  pid_t process() const { return std::atoi(argument.c_str()); }
};
using Attack = bool (*)(const Target&);

bool opens(const char* path, int flags) {
  return ::open(path, flags | O_CLOEXEC, 0600) >= 0;
}

bool fromAnotherThread(const Target& target) {
  bool succeeded = false;
  std::thread([&] { succeeded = opens(target.path(), O_RDONLY); }).join();
  return succeeded;
}

bool runs(const Target&) {
  std::array<char*, 1> none{nullptr};
  ::syscall(SYS_execve, "/nonexistent", none.data(), none.data());
  return errno == ENOENT;
}

bool fillsTheMemory(const Target&) {
  constexpr std::size_t block = 16 << 20;
  std::vector<std::unique_ptr<char[]>> blocks;
  for (int i = 0; i < 128; ++i) {
    blocks.push_back(std::make_unique<char[]>(block));
    std::memset(blocks.back().get(), i, block);
  }
  return true;
}

bool fillsTheMemoryWithSharedPages(const Target&) {
  return ::mmap(nullptr, std::size_t{1} << 30, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
}

bool fillsTheDisk(const Target& target) {
  const auto output = target.context.stage(target.input, "full", "bin");
  const std::string block(1 << 20, 'x');
  for (int i = 0; i < 64; ++i) output->write(block);
  return true;
}

bool fillsTheDiskWithManyFiles(const Target& target) {
  std::vector<std::unique_ptr<StagedOutput>> outputs;
  const std::string block(7 << 20, 'x');
  for (int i = 0; i < 32; ++i) {
    outputs.push_back(target.context.stage(target.input, "full", "bin"));
    outputs.back()->write(block);
    outputs.back()->publish(OutputRole::companion);
  }
  return true;
}

// What is kept in memory until it is too much, or somebody wants a descriptor.
bool outgrowsItsLimitAtOnce(const Target& target) {
  const auto output = target.context.stage(target.input, "full", "bin");
  output->write(std::string(60 << 10, 'x'));
  return output->descriptor() >= 0;
}

bool diesAfterPublishing(const Target& target) {
  const auto output = target.context.stage(target.input, "part", "bin");
  output->write(std::string("part"));
  output->publish(OutputRole::companion);
  target.context.open(target.input);  // the question takes the output along
  ::_exit(0);
}

bool waitsToBeStopped(const Target& target) {
  for (;;) target.context.checkCancellation();
}

bool liftsItsLimits(const Target&) {
  const rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
  return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 || ::prlimit(0, RLIMIT_DATA, &limit, nullptr) == 0;
}

bool signalsThroughTheKernel(const Target& target) {
  const InputHandle file = target.context.open(target.input);
  return ::fcntl(file.descriptor(), F_SETOWN, target.process()) == 0;
}

bool writesToItsInput(const Target& target) {
  const InputHandle file = target.context.open(target.input);
  return ::ftruncate(file.descriptor(), 0) == 0 || ::write(file.descriptor(), "x", 1) == 1 ||
         ::fchmod(file.descriptor(), 0) == 0;
}

const std::map<std::string, Attack>& systemAttacks() {
  static const std::map<std::string, Attack> attacks{
      {"read-home-file", [](const Target& target) { return opens(target.path(), O_RDONLY); }},
      {"read-from-thread", &fromAnotherThread},
      {"read-memory-of-process", [](const Target&) { return opens("/proc/self/mem", O_RDWR); }},
      {"look-without-reading", [](const Target& target) { return opens(target.path(), O_PATH); }},
      {"write-beside",
       [](const Target& target) { return opens((target.argument + ".new").c_str(), O_WRONLY | O_CREAT); }},
      {"write-over", [](const Target& target) { return opens(target.path(), O_WRONLY); }},
      {"write-input", &writesToItsInput},
      {"cut-by-path", [](const Target& target) { return ::truncate(target.path(), 0) == 0; }},
      {"remove", [](const Target& target) { return ::unlink(target.path()) == 0; }},
      {"rename", [](const Target& target) { return ::rename(target.path(), "/tmp/stolen") == 0; }},
      {"link", [](const Target& target) { return ::link(target.path(), (target.argument + ".link").c_str()) == 0; }},
      {"make-folder", [](const Target& target) { return ::mkdir((target.argument + ".d").c_str(), 0700) == 0; }},
      {"change-mode", [](const Target& target) { return ::chmod(target.path(), 0777) == 0; }},
      {"set-attribute", [](const Target& target) { return ::setxattr(target.path(), "user.x", "x", 1, 0) == 0; }},
      {"open-socket", [](const Target&) { return ::socket(AF_INET, SOCK_STREAM, 0) >= 0; }},
      {"open-local-socket", [](const Target&) { return ::socket(AF_UNIX, SOCK_DGRAM, 0) >= 0; }},
      {"trace-parent",
       [](const Target& target) { return ::ptrace(PTRACE_SEIZE, target.process(), nullptr, nullptr) == 0; }},
      {"kill-parent", [](const Target& target) { return ::kill(target.process(), SIGCONT) == 0; }},
      {"signal-through-kernel", &signalsThroughTheKernel},
      {"start-program", &runs},
      {"fork", [](const Target&) { return ::syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0) >= 0; }},
      {"io-uring", [](const Target&) { return ::syscall(SYS_io_uring_setup, 1, nullptr) >= 0 || errno == EFAULT; }},
      {"unshare", [](const Target&) { return ::unshare(CLONE_NEWUSER) == 0; }},
      {"read-keyring",
       [](const Target&) {
         return ::syscall(SYS_keyctl, KEYCTL_GET_KEYRING_ID, KEY_SPEC_USER_SESSION_KEYRING, 0) >= 0;
       }},
      {"open-device", [](const Target&) { return opens("/dev/zero", O_RDONLY); }},
      {"become-traceable", [](const Target&) { return ::prctl(PR_SET_DUMPABLE, 1, 0, 0, 0) == 0; }},
      {"outlive-parent", [](const Target&) { return ::prctl(PR_SET_PDEATHSIG, 0, 0, 0, 0) == 0; }},
      {"hide-memory", [](const Target&) { return ::memfd_create("x", 0) >= 0; }},
      {"lift-limits", &liftsItsLimits},
  };
  return attacks;
}

// What the worker says to the program, said by somebody else.
const platform::MessageSocket& connection() {
  static const platform::MessageSocket socket(platform::FileDescriptor(3));
  return socket;
}

MessageWriter say(Ask kind) {
  return std::move(MessageWriter().choice(kind));
}

// Sends it, and waits to be ended for it.
bool afterSending(const MessageWriter& message, int descriptor = -1) {
  connection().send(message.bytes(), std::span(&descriptor, descriptor >= 0 ? 1 : 0), std::chrono::seconds(60));
  for (;;) ::pause();
}

bool floods(const Target&) {
  for (;;) {
    connection().send(say(Ask::state).text("").number(1).number(0).number(0).bytes(), {}, std::chrono::seconds(60));
  }
}

bool spins(const Target&) {
  for (;;) std::this_thread::yield();
}

bool writesThroughNull(const Target&) {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
  return true;
}

const std::map<std::string, Attack>& programAttacks() {
  static const std::map<std::string, Attack> attacks{
      {"fill-memory", &fillsTheMemory},
      {"fill-memory-shared", &fillsTheMemoryWithSharedPages},
      {"fill-disk", &fillsTheDisk},
      {"fill-disk-with-many", &fillsTheDiskWithManyFiles},
      {"outgrow-at-once", &outgrowsItsLimitAtOnce},
      {"publish-and-exit", &diesAfterPublishing},
      {"wait", &waitsToBeStopped},
      {"crash", &writesThroughNull},
      {"abort", [](const Target&) -> bool { std::abort(); }},
      {"exit", [](const Target&) -> bool { ::_exit(0); }},
      {"hang", &spins},
      {"flood", &floods},
      {"garbage", [](const Target&) { return afterSending(MessageWriter().number(-77)); }},
      {"short-message", [](const Target&) { return afterSending(say(Ask::open)); }},
      {"long-message", [](const Target&) { return afterSending(say(Ask::publishStaged).number(1)); }},
      {"long-text", [](const Target&) { return afterSending(say(Ask::fault).number(std::int64_t{1} << 62)); }},
      {"send-descriptor", [](const Target&) { return afterSending(say(Ask::ready), 0); }},
      {"finish-without-output", [](const Target&) { return afterSending(say(Ask::finished).number(0).text("")); }},
      {"publish-unknown", [](const Target&) { return afterSending(say(Ask::publish).number(7).number(0)); }},
      {"list-unknown", [](const Target&) { return afterSending(say(Ask::output).number(7)); }},
      {"open-unknown", [](const Target&) { return afterSending(say(Ask::open).number(1)); }},
      {"enumerate-file", [](const Target&) { return afterSending(say(Ask::enumerate).number(0)); }},
      {"read-neighbour",
       [](const Target& target) { return afterSending(say(Ask::neighbour).number(0).text(target.argument)); }},
      {"climb", [](const Target&) { return afterSending(say(Ask::stage).number(0).text("../../x").text("txt")); }},
      {"break-line", [](const Target&) { return afterSending(say(Ask::stage).number(0).text("x\ny").text("txt")); }},
      {"cancel", [](const Target&) { return afterSending(say(Ask::cancelled)); }},
      {"cancel-by-error",
       [](const Target&) {
         MessageWriter message = say(Ask::failed);
         box::write(message, OperationError::cancelled());
         return afterSending(message);
       }},
      {"fail-for-others", [](const Target&) { return afterSending(say(Ask::failure).text("last.bin").text("x")); }},
      {"go-back",
       [](const Target&) {
         connection().send(say(Ask::state).text("").number(1).number(5).number(0).bytes(), {}, std::chrono::seconds(9));
         return afterSending(say(Ask::state).text("").number(1).number(4).number(0));
       }},
  };
  return attacks;
}

}  // namespace

std::vector<std::string> attacksOnTheSystem() {
  std::vector<std::string> names;
  for (const auto& [name, attack] : systemAttacks()) names.push_back(name);
  return names;
}

bool attemptAttack(const std::string& attack, const std::string& argument, const InputFile& input,
                   OperationContext& context) {
  for (const auto* attacks : {&systemAttacks(), &programAttacks()}) {
    if (const auto found = attacks->find(attack); found != attacks->end())
      return found->second({argument, input, context});
  }
  throw OperationError::unsupportedInput("There is no attack " + attack + ".");
}

}  // namespace quirn::hostile
