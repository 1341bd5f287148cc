// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A worker: another process of this program, which is handed two descriptors and nothing else.
//
// Of its two connections one carries messages, the other single numbers by which the worker is asked or told
// something while it is busy. When the second hangs up, whoever started the worker is gone.

#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/message_socket.h"

namespace quirn::platform {

// The program that runs now, whatever has become of its file.
inline constexpr const char* ownProgram = "/proc/self/exe";

// What the kernel holds a worker to.
struct WorkerLimits {
  std::int64_t memory = 0;               // bytes of data
  std::int64_t outputSize = 0;           // bytes of one file
  std::chrono::seconds processorTime{};  // since the worker began

  bool operator==(const WorkerLimits&) const = default;
};

// The side of the process that starts it.
class WorkerProcess {
 public:
  // Starts `program --worker KIND`, with a cleared environment and its standard streams on nothing. The worker dies
  // when the calling thread ends, at the latest. Throws std::system_error, also in a process that was itself started
  // so: a worker has no workers.
  WorkerProcess(const std::filesystem::path& program, const std::string& kind);
  // Kills the worker.
  ~WorkerProcess();
  WorkerProcess(const WorkerProcess&) = delete;
  WorkerProcess& operator=(const WorkerProcess&) = delete;

  const MessageSocket& messages() const { return messages_; }
  pid_t processID() const { return child_; }

  // Sends a number without waiting; one that finds no room is lost, as the worker has plenty to read then.
  void tell(std::uint32_t number) const;

  // From now on. Does nothing if the worker is dead.
  void limit(const WorkerLimits& limits);

 private:
  MessageSocket messages_;
  MessageSocket control_;
  pid_t child_ = -1;
  WorkerLimits limits_;
};

// The side of the worker.
class WorkerConnection {
 public:
  // Takes over what this process was started with. Throws std::system_error in a process that wasn't started as a
  // worker.
  static WorkerConnection inherited();

  const MessageSocket& messages() const { return messages_; }

  // The next number; waits for it. Nothing once the other side is gone.
  std::optional<std::uint32_t> hear() const;

 private:
  WorkerConnection(FileDescriptor messages, FileDescriptor control);

  MessageSocket messages_;
  FileDescriptor control_;
};

}  // namespace quirn::platform
