// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Ctrl-C and its relatives, noticed where it suits the program instead of in a signal handler.

#pragma once

#include <csignal>
#include <optional>

namespace quirn::cli {

class Interrupts {
 public:
  // Holds back SIGINT, SIGTERM and SIGHUP in this thread and those that it starts. One that the
  // program was started to ignore, as nohup and background jobs are, stays ignored.
  Interrupts();

  // The signal that has come since the last call, if any. A second one ends the program on the
  // spot: the person has waited long enough.
  std::optional<int> poll();

  // The signal that came first.
  std::optional<int> received() const { return received_; }

 private:
  sigset_t signals_{};
  std::optional<int> received_;
};

}  // namespace quirn::cli
