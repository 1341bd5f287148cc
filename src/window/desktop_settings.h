// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the desktop says about how programs should look: light or dark, and whether things may move.
// Asked through the settings portal (org.freedesktop.portal.Settings); where there is none, or no
// session bus, the answer is light and in motion.

#pragma once

#include <QDBusVariant>
#include <QObject>
#include <functional>

#include "window/colors.h"
#include "window/style.h"

namespace quirn::window {

struct Appearance {
  Scheme scheme = Scheme::light;
  Motion motion = Motion::full;
  bool operator==(const Appearance&) const = default;
};

// Whether there is a session bus to be asked. Looking for one never starts one.
bool hasSessionBus();

// Belongs to the interface thread, which waits for the portal's first answer for a blink and for no
// later one.
class DesktopSettings final : public QObject {
  Q_OBJECT

 public:
  DesktopSettings();

  const Appearance& appearance() const { return appearance_; }
  // Called at every change from now on.
  void whenChanged(std::function<void(const Appearance&)> apply) { apply_ = std::move(apply); }

 private Q_SLOTS:
  void settingChanged(const QString& name, const QString& key, const QDBusVariant& value);

 private:
  void take(const QString& name, const QString& key, const QVariant& value);

  Appearance appearance_;
  std::function<void(const Appearance&)> apply_;
};

}  // namespace quirn::window
