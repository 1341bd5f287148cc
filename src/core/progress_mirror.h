// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A run's progress as the interface shows it. The run changes its progress from many threads, as
// often as it likes; the mirror brings that to the interface thread, at most one value of the
// fraction for each turn of its queue, and always the newest.

#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <optional>

#include "core/progress.h"
#include "core/signal.h"
#include "platform/main_queue.h"

namespace quirn {

class ProgressMirror : public std::enable_shared_from_this<ProgressMirror> {
 public:
  // Made on the interface thread. Observes until it is dropped; `queue` outlives the run.
  static std::shared_ptr<ProgressMirror> of(const Progress& progress, platform::MainQueue& queue);

  // For the interface thread alone.
  double fraction() const { return fraction_; }
  bool isFinished() const { return isFinished_; }
  bool isCancelled() const { return isCancelled_; }

  // Emitted on the interface thread when one of the three has another value.
  Signal<>& changed() { return changed_; }

 private:
  explicit ProgressMirror(platform::MainQueue& queue) : queue_(queue) {}
  void observe(const Progress& progress);
  void keepFraction(const Progress& progress);             // on any thread
  void postFlag(bool ProgressMirror::* flag, bool value);  // on any thread
  void flush();

  platform::MainQueue& queue_;
  double fraction_ = 0;
  bool isFinished_ = false;
  bool isCancelled_ = false;
  Signal<> changed_;
  std::array<Subscription, 3> observers_;

  std::mutex lock_;
  // Guarded by lock_.
  std::optional<double> pendingFraction_;  // the newest value not yet shown
  bool flushScheduled_ = false;
};

}  // namespace quirn
