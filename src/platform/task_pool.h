// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The threads that do the work: one pool for the whole process, as many threads as processors.

#pragma once

#include <functional>

namespace quirn::platform {

// The processors that this process may use now, at least 1.
int activeProcessorCount();

class TaskPool {
 public:
  static TaskPool& shared();

  // Runs `task` on a thread of the pool, soon. The task lets no exception out. May be called from
  // any thread.
  void submit(std::function<void()> task);
};

}  // namespace quirn::platform
