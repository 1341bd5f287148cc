// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/desktop_settings.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QFileInfo>
#include <utility>

#include "window/child.h"

namespace quirn::window {
namespace {

constexpr int portalPatience = 60;  // milliseconds, once, before the first paint

const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString interface = "org.freedesktop.portal.Settings";

const QString appearanceName = "org.freedesktop.appearance";
const QString schemeKey = "color-scheme";
const QString interfaceName = "org.gnome.desktop.interface";
const QString motionKey = "enable-animations";

QDBusMessage question(const QString& name, const QString& key) {
  QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, "Read");
  message << name << key;
  return message;
}

// The portal wraps its answers once or twice.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

bool hasSessionBus() {
  return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
         QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

DesktopSettings::DesktopSettings() {
  if (!hasSessionBus()) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  const QDBusReply<QDBusVariant> scheme = bus.call(question(appearanceName, schemeKey), QDBus::Block, portalPatience);
  if (scheme.isValid()) take(appearanceName, schemeKey, scheme.value().variant());
  auto* const watcher =
      child<QDBusPendingCallWatcher>(static_cast<QObject*>(this), bus.asyncCall(question(interfaceName, motionKey)));
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (!reply.isError()) take(interfaceName, motionKey, reply.value().variant());
    call->deleteLater();
  });
  bus.connect(service, path, interface, "SettingChanged", this, SLOT(settingChanged(QString, QString, QDBusVariant)));
}

void DesktopSettings::settingChanged(const QString& name, const QString& key, const QDBusVariant& value) {
  take(name, key, value.variant());
}

void DesktopSettings::take(const QString& name, const QString& key, const QVariant& value) {
  const Appearance before = appearance_;
  constexpr uint preferDark = 1;
  const QVariant plain = unwrapped(value);
  if (name == appearanceName && key == schemeKey)
    appearance_.scheme = plain.toUInt() == preferDark ? Scheme::dark : Scheme::light;
  if (name == interfaceName && key == motionKey) appearance_.motion = plain.toBool() ? Motion::full : Motion::reduced;
  if (apply_ && appearance_ != before) apply_(appearance_);
}

}  // namespace quirn::window
