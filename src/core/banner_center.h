// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The short messages at the top of the window, which go away by themselves.

#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/signal.h"
#include "platform/main_queue.h"
#include "platform/uuid.h"

namespace quirn {

enum class BannerStyle { info, success, warning, error };

struct Banner {
  platform::Uuid id;
  BannerStyle style = BannerStyle::info;
  std::string message;
  std::chrono::system_clock::time_point createdAt;
};

// All of it belongs to the interface thread.
class BannerCenter {
 public:
  // What a message gets to be spoken with by a screen reader.
  using Announcer = std::function<void(const std::string& message)>;

  // `queue` has the timers, and outlives this.
  explicit BannerCenter(platform::MainQueue& queue, Announcer announce = {})
      : queue_(queue), announce_(std::move(announce)) {}

  // From oldest to newest, at most three.
  const std::vector<Banner>& banners() const { return banners_; }

  static constexpr std::chrono::milliseconds usualLifetime{6000};

  void post(BannerStyle style, std::string message, std::chrono::milliseconds lifetime = usualLifetime);

  // Does nothing if that banner is gone already.
  void dismiss(const platform::Uuid& id);

  Signal<>& changed() { return changed_; }

 private:
  platform::MainQueue& queue_;
  Announcer announce_;
  std::vector<Banner> banners_;
  Signal<> changed_;
  // A timer holds this weakly: it may ring when the centre is gone.
  std::shared_ptr<BannerCenter*> self_ = std::make_shared<BannerCenter*>(this);
};

}  // namespace quirn
