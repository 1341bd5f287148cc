// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The queue of the interface thread, in Qt's event loop.

#pragma once

#include <QObject>

#include "platform/main_queue.h"

namespace quirn::window {

// Made on the interface thread. What has not run when this is destroyed never does.
class WindowQueue final : public platform::MainQueue {
 public:
  void post(std::function<void()> task) override;
  void postAfter(std::chrono::milliseconds delay, std::function<void()> task) override;

 private:
  QObject receiver_;
};

}  // namespace quirn::window
