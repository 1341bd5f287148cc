// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/window_queue.h"

#include <QMetaObject>
#include <QTimer>
#include <utility>

namespace quirn::window {

void WindowQueue::post(std::function<void()> task) {
  QMetaObject::invokeMethod(&receiver_, std::move(task), Qt::QueuedConnection);
}

// A timer belongs to the thread that makes it, so it is made on the interface thread.
void WindowQueue::postAfter(std::chrono::milliseconds delay, std::function<void()> task) {
  post([this, delay, task = std::move(task)] { QTimer::singleShot(delay, &receiver_, task); });
}

}  // namespace quirn::window
