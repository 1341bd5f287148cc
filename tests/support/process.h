// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Programs run by a test, Quirn above all: what they were given, and what came of it. Nothing waits
// for longer than a minute.

#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/file_descriptor.h"

namespace quirn::tests {

// The folder of the sources.
std::filesystem::path sourceFolder();
// Quirn as it was built with the tests.
std::filesystem::path quirnProgram();

struct Invocation {
  enum class ErrorStream { pipe, terminal };

  std::vector<std::string> arguments;
  std::filesystem::path folder = "/";                // the working directory
  std::map<std::string, std::string> environment{};  // on top of this process's own
  ErrorStream errorStream = ErrorStream::pipe;
  // In the child, before the program starts; only what is safe after a fork.
  std::function<void()> beforeStart{};
  std::filesystem::path program{};  // Quirn itself if empty
};

struct Ended {
  int status = 0;  // of exit; 128 and the signal's number if a signal ended it
  std::string output;
  std::string error;
};

class Process {
 public:
  explicit Process(const Invocation& invocation);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  // Reads until `text` has come on standard error. False if the program ended or time ran out.
  bool waitForError(std::string_view text);
  // As if typed at its terminal.
  void type(std::string_view keys) const;
  void signal(int number) const;
  Ended wait();

 private:
  bool readMore();

  pid_t child_ = -1;
  platform::FileDescriptor outputEnd_;
  platform::FileDescriptor errorEnd_;
  Ended ended_;
};

Ended run(const Invocation& invocation);

// Quirn with these arguments in this folder.
Ended quirn(const std::filesystem::path& folder, std::vector<std::string> arguments,
            std::function<void()> beforeStart = {});

}  // namespace quirn::tests
