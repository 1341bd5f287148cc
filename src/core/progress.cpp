// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/progress.h"

#include <algorithm>
#include <utility>

namespace quirn {

std::int64_t Progress::totalUnitCount() const {
  const std::scoped_lock guard(mutex_);
  return totalUnitCount_;
}

void Progress::setTotalUnitCount(std::int64_t count) {
  const std::scoped_lock guard(mutex_);
  totalUnitCount_ = count;
}

std::int64_t Progress::completedUnitCount() const {
  const std::scoped_lock guard(mutex_);
  return completedUnitCount_;
}

void Progress::complete(std::int64_t units) {
  const std::scoped_lock guard(mutex_);
  completedUnitCount_ += units;
}

double Progress::fractionCompleted() const {
  const std::scoped_lock guard(mutex_);
  if (totalUnitCount_ <= 0) return 0;
  return std::clamp(static_cast<double>(completedUnitCount_) / static_cast<double>(totalUnitCount_), 0.0, 1.0);
}

bool Progress::isFinished() const {
  const std::scoped_lock guard(mutex_);
  return totalUnitCount_ > 0 && completedUnitCount_ >= totalUnitCount_;
}

bool Progress::isCancelled() const {
  const std::scoped_lock guard(mutex_);
  return isCancelled_;
}

void Progress::cancel() {
  std::function<void()> handler;
  {
    const std::scoped_lock guard(mutex_);
    isCancelled_ = true;
    handler = std::exchange(cancellationHandler_, nullptr);
  }
  if (handler) handler();
}

void Progress::setCancellationHandler(std::function<void()> handler) {
  {
    const std::scoped_lock guard(mutex_);
    if (!isCancelled_) {
      cancellationHandler_ = std::move(handler);
      return;
    }
  }
  handler();
}

}  // namespace quirn
