// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/outbox.h"

#include <chrono>
#include <cstdlib>

namespace quirn::box {
namespace {

constexpr std::chrono::minutes patience{10};  // the program reads what it is told at once

}  // namespace

void Outbox::note(const MessageWriter& message) {
  const std::scoped_lock guard(mutex_);
  if (noted_.bytes().size() + message.bytes().size() > platform::longestMessage) sendNoted();
  noted_.append(message);
}

void Outbox::send() {
  const std::scoped_lock guard(mutex_);
  sendNoted();
}

std::int64_t Outbox::sendCount() const {
  const std::scoped_lock guard(mutex_);
  return sendCount_;
}

void Outbox::sendNoted() {
  // Another thread has sent it meanwhile. An empty message would be taken for the end of the connection.
  if (noted_.bytes().empty()) return;
  if (!messages_.send(noted_.bytes(), {}, patience)) leave();
  noted_.clear();
  ++sendCount_;
}

void leave() {
  std::_Exit(EXIT_FAILURE);
}

}  // namespace quirn::box
