// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How far a run is, and the one way to stop it. All members may be called from any thread.

#pragma once

#include <cstdint>
#include <functional>
#include <mutex>

#include "core/signal.h"

namespace quirn {

class Progress {
 public:
  // Units are files unless an operation says otherwise.
  explicit Progress(std::int64_t totalUnitCount) : totalUnitCount_(totalUnitCount) {}

  std::int64_t totalUnitCount() const;
  void setTotalUnitCount(std::int64_t count);
  std::int64_t completedUnitCount() const;
  void complete(std::int64_t units);

  // From 0 to 1.
  double fractionCompleted() const;
  bool isFinished() const;
  bool isCancelled() const;

  // Asks the run to stop. Returns at once; the run ends when its workers have noticed.
  void cancel();

  // `handler` is called once, on the thread that cancels; at once if that has already happened.
  void setCancellationHandler(std::function<void()> handler);

  // Observers are called on the thread that makes the change, under no lock. Two changes that come
  // together may tell in either order, so an observer reads the value it wants from the progress;
  // read behind a lock of its own, the last value it reads is the newest.
  using Observer = std::function<void(const Progress&)>;
  // Called at once, and at every change of fractionCompleted().
  [[nodiscard]] Subscription observeFraction(const Observer& observer) const;
  // Called at every change of isFinished() or isCancelled().
  [[nodiscard]] Subscription observeFinished(Observer observer) const;
  [[nodiscard]] Subscription observeCancelled(Observer observer) const;

 private:
  void change(const std::function<void()>& changing);
  double fraction() const;  // under mutex_, as the next
  bool allCompleted() const;

  mutable std::mutex mutex_;
  // All guarded by mutex_.
  std::int64_t totalUnitCount_;
  std::int64_t completedUnitCount_ = 0;
  bool isCancelled_ = false;
  std::function<void()> cancellationHandler_;

  Signal<Progress> fractionChanged_;
  Signal<Progress> finishedChanged_;
  Signal<Progress> cancelledChanged_;
};

}  // namespace quirn
