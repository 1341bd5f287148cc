// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Quirn on the session bus, as org.freedesktop.Application: the desktop's launcher starts it, hands it
// files and calls its actions there.

#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <functional>

#include "shell/window_start.h"

namespace quirn::window {

// The name of the desktop file, and with it the one on the bus.
inline constexpr const char* applicationID = "com.morvanta.Quirn";

class DesktopService final : public QDBusVirtualObject {
 public:
  using Handler = std::function<void(const WindowRequest&)>;

  explicit DesktopService(Handler handle) : handle_(std::move(handle)) {}
  // Nothing of the bus arrives any more.
  ~DesktopService() override;

  // Takes the name on the bus. Without a bus, or where another program has the name, nothing comes.
  void offer();

  QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  Handler handle_;
};

}  // namespace quirn::window
