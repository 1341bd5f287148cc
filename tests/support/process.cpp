// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>

namespace quirn::tests {
namespace {

using platform::FileDescriptor;

constexpr std::chrono::seconds longest{60};
constexpr int notStarted = 127;

struct Pipe {
  FileDescriptor reading;
  FileDescriptor writing;
};

Pipe makePipe() {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) platform::throwErrno("pipe");
  return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

Pipe makeTerminal() {
  FileDescriptor near(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!near || ::grantpt(near.number()) != 0 || ::unlockpt(near.number()) != 0) platform::throwErrno("pseudo-terminal");
  std::array<char, 64> name{};
  if (::ptsname_r(near.number(), name.data(), name.size()) != 0) platform::throwErrno("ptsname");
  FileDescriptor far(::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  const winsize size{24, 80, 0, 0};
  if (!far || ::ioctl(far.number(), TIOCSWINSZ, &size) != 0) platform::throwErrno("terminal");
  return {std::move(near), std::move(far)};
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> environmentWith(std::map<std::string, std::string> changes) {
  changes.insert({{"LC_ALL", "C.UTF-8"}, {"TERM", "xterm"}});
  std::vector<std::string> texts;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string text = *variable;
    const std::string name = text.substr(0, text.find('='));
    if (!changes.contains(name) && name != "NO_COLOR") texts.push_back(text);
  }
  for (const auto& [name, value] : changes) texts.push_back(name + "=" + value);
  return texts;
}

}  // namespace

std::filesystem::path sourceFolder() {
  return QUIRN_SOURCE_DIR;
}

std::filesystem::path quirnProgram() {
  return QUIRN_PROGRAM;
}

Process::Process(const Invocation& invocation) {
  const bool hasTerminal = invocation.errorStream == Invocation::ErrorStream::terminal;
  const std::string program = (invocation.program.empty() ? quirnProgram() : invocation.program).string();
  std::vector<std::string> words{program};
  words.insert(words.end(), invocation.arguments.begin(), invocation.arguments.end());
  std::vector<std::string> environment = environmentWith(invocation.environment);
  const std::vector<char*> argv = pointersTo(words);
  const std::vector<char*> envp = pointersTo(environment);
  // By descriptor, so that a child that became another user needs no way to the program's folder.
  const FileDescriptor executable(::open(program.c_str(), O_RDONLY | O_CLOEXEC));
  const FileDescriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  Pipe output = makePipe();
  Pipe error = hasTerminal ? makeTerminal() : makePipe();

  child_ = ::fork();
  if (child_ < 0) platform::throwErrno("fork");
  if (child_ == 0) {
    ::setsid();
    if (hasTerminal) ::ioctl(error.writing.number(), TIOCSCTTY, 0);
    ::dup2(nothing.number(), STDIN_FILENO);
    ::dup2(output.writing.number(), STDOUT_FILENO);
    ::dup2(error.writing.number(), STDERR_FILENO);
    if (::chdir(invocation.folder.c_str()) != 0) ::_exit(notStarted);
    if (invocation.beforeStart) invocation.beforeStart();
    ::fexecve(executable.number(), argv.data(), envp.data());
    ::_exit(notStarted);
  }
  outputEnd_ = std::move(output.reading);
  errorEnd_ = std::move(error.reading);
}

Process::~Process() {
  if (child_ <= 0) return;
  ::kill(child_, SIGKILL);
  ::waitpid(child_, nullptr, 0);
}

bool Process::readMore() {
  std::array<pollfd, 2> ends{{{outputEnd_.number(), POLLIN, 0}, {errorEnd_.number(), POLLIN, 0}}};
  if (!outputEnd_ && !errorEnd_) return false;
  if (::poll(ends.data(), ends.size(), std::chrono::milliseconds(longest).count()) <= 0) {
    ADD_FAILURE() << "the program says nothing and does not end";
    signal(SIGKILL);
    return false;
  }
  const auto take = [](const pollfd& end, FileDescriptor& descriptor, std::string& text) {
    if (end.revents == 0) return;
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(descriptor.number(), bytes.data(), bytes.size());
    if (count > 0) {
      text.append(bytes.data(), static_cast<std::size_t>(count));
    } else {
      FileDescriptor closing = std::exchange(descriptor, FileDescriptor());
    }
  };
  take(ends[0], outputEnd_, ended_.output);
  take(ends[1], errorEnd_, ended_.error);
  return true;
}

bool Process::waitForError(std::string_view text) {
  while (ended_.error.find(text) == std::string::npos) {
    if (!readMore()) return false;
  }
  return true;
}

void Process::type(std::string_view keys) const {
  platform::writeAll(errorEnd_.number(), std::as_bytes(std::span(keys)));
}

void Process::signal(int number) const {
  ::kill(child_, number);
}

Ended Process::wait() {
  while (readMore()) {
  }
  int status = 0;
  ::waitpid(std::exchange(child_, -1), &status, 0);
  ended_.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  EXPECT_NE(ended_.status, notStarted) << "the program could not be started";
  return std::move(ended_);
}

Ended run(const Invocation& invocation) {
  return Process(invocation).wait();
}

Ended quirn(const std::filesystem::path& folder, std::vector<std::string> arguments,
            std::function<void()> beforeStart) {
  return run({.arguments = std::move(arguments), .folder = folder, .beforeStart = std::move(beforeStart)});
}

}  // namespace quirn::tests
