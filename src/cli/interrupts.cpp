// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/interrupts.h"

#include <pthread.h>

#include <ctime>

namespace quirn::cli {

Interrupts::Interrupts() {
  ::sigemptyset(&signals_);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action{};
    const bool isIgnored = ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
    // A signal that is held back is kept for the program even if it ignores it.
    if (!isIgnored) ::sigaddset(&signals_, signal);
  }
  ::pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
}

std::optional<int> Interrupts::poll() {
  constexpr timespec atOnce{};
  const int signal = ::sigtimedwait(&signals_, nullptr, &atOnce);
  if (signal <= 0) return std::nullopt;
  if (received_) {
    ::pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
    std::raise(signal);
  }
  received_ = received_.value_or(signal);
  return signal;
}

}  // namespace quirn::cli
