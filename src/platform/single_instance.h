// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One running instance of the program in one place, and what later starts hand to it: over a socket in
// a folder that the person alone can reach.

#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "platform/file_descriptor.h"

namespace quirn::platform {

// The folder for it: the session's runtime folder (XDG Base Directory standard), else a private one in
// the system's temporary folder. Throws std::system_error if there is neither.
std::filesystem::path runtimeFolder();

class SingleInstance {
 public:
  // Called on a thread of its own, for one message after the other.
  using Receiver = std::function<void(std::string message)>;

  // Becomes the instance of that name; null if another process is. `name` is a file's name. Throws
  // std::system_error.
  static std::unique_ptr<SingleInstance> claim(const std::filesystem::path& folder, const std::string& name);
  // Messages that are under way by then may be lost; their senders are told.
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Begins to receive; called once.
  void listen(Receiver receive);

  // Hands a message to the instance of that name. False if there is none, or it doesn't take it
  // within a few seconds.
  static bool handOver(const std::filesystem::path& folder, const std::string& name, std::string_view message);

 private:
  SingleInstance(FileDescriptor folder, std::string name, FileDescriptor lock, FileDescriptor socket);
  void serve(const Receiver& receive) const;

  FileDescriptor folder_;
  std::string name_;
  FileDescriptor lock_;    // locked while this lives
  FileDescriptor socket_;  // listens
  FileDescriptor stop_;    // an eventfd
  std::thread thread_;
};

}  // namespace quirn::platform
