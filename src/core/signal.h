// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A change that others want to hear of. All members may be called from any thread.

#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace quirn {

// Keeps an observer observing. Dropping it ends that; a call that is already under way on another
// thread is not waited for, so an observer that may be gone by then holds itself weakly.
using Subscription = std::shared_ptr<const void>;

template <class... Arguments>
class Signal {
 public:
  using Observer = std::function<void(const Arguments&...)>;

  [[nodiscard]] Subscription subscribe(Observer observer) const {
    auto kept = std::make_shared<const Observer>(std::move(observer));
    const std::scoped_lock guard(mutex_);
    observers_.push_back(kept);
    return kept;
  }

  // Calls the observers on this thread, in order of subscribing. One that is added meanwhile is
  // called from the next time on.
  void emit(const Arguments&... arguments) const {
    for (const auto& weak : present()) {
      if (const auto observer = weak.lock()) (*observer)(arguments...);
    }
  }

 private:
  using Observers = std::vector<std::weak_ptr<const Observer>>;

  Observers present() const {
    const std::scoped_lock guard(mutex_);
    std::erase_if(observers_, [](const auto& weak) { return weak.expired(); });
    return observers_;
  }

  mutable std::mutex mutex_;
  mutable Observers observers_;  // guarded by mutex_; watching a thing doesn't change it
};

}  // namespace quirn
