// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One end of a connection between two processes of this machine: whole messages in order, each with the descriptors
// that are to be handed over.

#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/file_descriptor.h"

namespace quirn::platform {

// The longest message, in bytes. Fits the kernel's usual buffer, and the longest argument of a command line.
inline constexpr std::size_t longestMessage = 160 << 10;
// As many as a message may bring.
inline constexpr std::size_t mostDescriptors = 32;

class MessageSocket {
 public:
  explicit MessageSocket(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

  // Both ends of a new connection.
  static std::pair<MessageSocket, MessageSocket> pair();

  struct Message {
    std::string bytes;
    std::vector<FileDescriptor> descriptors;
  };
  // What a message may bring. A descriptor that is not wanted never enters this process.
  enum class Descriptors { accepted, refused };

  // Waits while the other end is slow to read, until the deadline. False if it has hung up or the time ran out. Throws
  // std::system_error, and std::length_error for a message that is too long or brings too many descriptors.
  bool send(std::string_view bytes, std::span<const int> descriptors, std::chrono::milliseconds patience) const;

  // The next message; waits for it. Nothing once the other end has hung up; an empty message is taken for that. Throws
  // std::system_error, with EBADMSG for a message that is too long or brings what is refused.
  std::optional<Message> receive(Descriptors descriptors) const;

  // True as soon as receive() wouldn't wait; false when the time ran out.
  bool waitForMessage(std::chrono::milliseconds patience) const;

  int descriptor() const { return descriptor_.number(); }

 private:
  FileDescriptor descriptor_;
};

}  // namespace quirn::platform
