// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/subprocess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>
#include <vector>

#include "platform/file_descriptor.h"

namespace quirn::platform {
namespace {

struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;

  Pipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throwErrno("pipe2");
    readEnd = FileDescriptor(ends[0]);
    writeEnd = FileDescriptor(ends[1]);
  }
};

// What the new program begins with: nothing on its input, a pipe as its output, and the signals as
// a program expects them, since we hold some back and ignore others.
class Start {
 public:
  explicit Start(int output) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    ::posix_spawnattr_init(&attributes_);
    sigset_t none{};
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    sigset_t pipes{};
    ::sigemptyset(&pipes);
    ::sigaddset(&pipes, SIGPIPE);
    ::posix_spawnattr_setsigdefault(&attributes_, &pipes);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  Start(const Start&) = delete;
  Start& operator=(const Start&) = delete;
  ~Start() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }

  pid_t spawn(const char* program, std::vector<std::string> words) const {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    const int error = ::posix_spawn(&child, program, &actions_, &attributes_, arguments.data(), environ);
    if (error != 0) throw std::system_error(error, std::generic_category(), program);
    return child;
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

std::string readToEnd(int descriptor) {
  std::string text;
  std::array<char, 4096> chunk{};
  for (;;) {
    const ssize_t count = ::read(descriptor, chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;  // The end, whichever: the exit status tells of a failure.
    text.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

int exitStatusOf(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) throwErrno("waitpid");
  }
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

FinishedProgram runSubprocess(const char* program, std::initializer_list<const char*> arguments) {
  std::vector<std::string> words{program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  Pipe pipe;
  const pid_t child = Start(pipe.writeEnd.number()).spawn(program, std::move(words));
  pipe.writeEnd = FileDescriptor();
  FinishedProgram finished;
  finished.output = readToEnd(pipe.readEnd.number());
  finished.exitStatus = exitStatusOf(child);
  return finished;
}

}  // namespace quirn::platform
