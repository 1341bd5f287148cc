// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a worker has to say: kept until somebody must hear it, since sending costs more than writing.

#pragma once

#include <cstdint>
#include <mutex>

#include "core/box/message.h"
#include "platform/message_socket.h"

namespace quirn::box {

// All members may be called from any thread. Where nobody listens any more, they end the process.
class Outbox {
 public:
  // `messages` outlives it.
  explicit Outbox(const platform::MessageSocket& messages) : messages_(messages) {}

  // What needs no answer; it goes with the next message that is sent.
  void note(const MessageWriter& message);
  // Sends what was noted.
  void send();

  // How often something was sent.
  std::int64_t sendCount() const;

 private:
  void sendNoted();  // mutex_ is held

  const platform::MessageSocket& messages_;
  mutable std::mutex mutex_;
  // All guarded by mutex_.
  MessageWriter noted_;
  std::int64_t sendCount_ = 0;
};

// Without the program there is nobody to work for.
[[noreturn]] void leave();

}  // namespace quirn::box
