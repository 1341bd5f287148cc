// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/progress_mirror.h"

#include <utility>

namespace quirn {

std::shared_ptr<ProgressMirror> ProgressMirror::of(const Progress& progress, platform::MainQueue& queue) {
  // The constructor is private, so that every mirror is shared: std::make_shared can't call it.
  std::shared_ptr<ProgressMirror> mirror(new ProgressMirror(queue));
  mirror->observe(progress);
  return mirror;
}

void ProgressMirror::observe(const Progress& progress) {
  const auto weakly = [weak = weak_from_this()](auto tell) {
    return [weak, tell](const Progress& changed) {
      if (const auto mirror = weak.lock()) tell(*mirror, changed);
    };
  };
  observers_[0] = progress.observeFraction(
      weakly([](ProgressMirror& mirror, const Progress& changed) { mirror.keepFraction(changed); }));
  observers_[1] = progress.observeFinished(weakly([](ProgressMirror& mirror, const Progress& changed) {
    mirror.postFlag(&ProgressMirror::isFinished_, changed.isFinished());
  }));
  observers_[2] = progress.observeCancelled(weakly([](ProgressMirror& mirror, const Progress& changed) {
    mirror.postFlag(&ProgressMirror::isCancelled_, changed.isCancelled());
  }));
}

void ProgressMirror::keepFraction(const Progress& progress) {
  {
    const std::scoped_lock guard(lock_);
    // Read under the lock, so that of two threads the later one has the newer value.
    pendingFraction_ = progress.fractionCompleted();
    if (std::exchange(flushScheduled_, true)) return;
  }
  queue_.post([weak = weak_from_this()] {
    if (const auto mirror = weak.lock()) mirror->flush();
  });
}

void ProgressMirror::flush() {
  std::optional<double> pending;
  {
    const std::scoped_lock guard(lock_);
    flushScheduled_ = false;
    pending = std::exchange(pendingFraction_, std::nullopt);
  }
  if (!pending || *pending == fraction_) return;
  fraction_ = *pending;
  changed_.emit();
}

void ProgressMirror::postFlag(bool ProgressMirror::* flag, bool value) {
  queue_.post([weak = weak_from_this(), flag, value] {
    const auto mirror = weak.lock();
    if (!mirror || std::exchange((*mirror).*flag, value) == value) return;
    mirror->changed_.emit();
  });
}

}  // namespace quirn
