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
  change([&] { totalUnitCount_ = count; });
}

std::int64_t Progress::completedUnitCount() const {
  const std::scoped_lock guard(mutex_);
  return completedUnitCount_;
}

void Progress::complete(std::int64_t units) {
  change([&] { completedUnitCount_ += units; });
}

void Progress::change(const std::function<void()>& changing) {
  bool fractionChanges = false;
  bool finishedChanges = false;
  {
    const std::scoped_lock guard(mutex_);
    const double oldFraction = fraction();
    const bool wasFinished = allCompleted();
    changing();
    fractionChanges = fraction() != oldFraction;
    finishedChanges = allCompleted() != wasFinished;
  }
  if (fractionChanges) fractionChanged_.emit(*this);
  if (finishedChanges) finishedChanged_.emit(*this);
}

double Progress::fraction() const {
  if (totalUnitCount_ <= 0) return 0;
  return std::clamp(static_cast<double>(completedUnitCount_) / static_cast<double>(totalUnitCount_), 0.0, 1.0);
}

bool Progress::allCompleted() const {
  return totalUnitCount_ > 0 && completedUnitCount_ >= totalUnitCount_;
}

double Progress::fractionCompleted() const {
  const std::scoped_lock guard(mutex_);
  return fraction();
}

bool Progress::isFinished() const {
  const std::scoped_lock guard(mutex_);
  return allCompleted();
}

bool Progress::isCancelled() const {
  const std::scoped_lock guard(mutex_);
  return isCancelled_;
}

void Progress::cancel() {
  std::function<void()> handler;
  {
    const std::scoped_lock guard(mutex_);
    if (std::exchange(isCancelled_, true)) return;
    handler = std::exchange(cancellationHandler_, nullptr);
  }
  if (handler) handler();
  cancelledChanged_.emit(*this);
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

Subscription Progress::observeFraction(const Observer& observer) const {
  // First the subscription: a change in between is told twice rather than never.
  Subscription subscription = fractionChanged_.subscribe(observer);
  observer(*this);
  return subscription;
}

Subscription Progress::observeFinished(Observer observer) const {
  return finishedChanged_.subscribe(std::move(observer));
}

Subscription Progress::observeCancelled(Observer observer) const {
  return cancelledChanged_.subscribe(std::move(observer));
}

}  // namespace quirn
