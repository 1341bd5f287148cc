// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/desktop_service.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <optional>

#include "shell/desktop_actions.h"
#include "window/desktop_settings.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

const QString path = "/com/morvanta/Quirn";
const QString interface = "org.freedesktop.Application";

std::string tokenIn(const QVariant& platformData) {
  const auto values = qdbus_cast<QVariantMap>(platformData);
  for (const char* const key : {"activation-token", "desktop-startup-id"}) {
    if (values.contains(key)) return fromQt(values.value(key).toString());
  }
  return "";
}

// What a call asks for; nothing if the interface has no such call.
std::optional<WindowRequest> requestIn(const QDBusMessage& message) {
  const QList<QVariant> arguments = message.arguments();
  const QString member = message.member();
  WindowRequest request;
  if (member == "Activate" && arguments.size() == 1) {
    request.activationToken = tokenIn(arguments[0]);
  } else if (member == "Open" && arguments.size() == 2) {
    for (const QString& location : arguments[0].toStringList()) request.locations.push_back(fromQt(location));
    request.activationToken = tokenIn(arguments[1]);
  } else if (member == "ActivateAction" && arguments.size() == 3) {
    request.operationID = operationOfAction(fromQt(arguments[0].toString()));
    request.activationToken = tokenIn(arguments[2]);
  } else {
    return std::nullopt;
  }
  return request;
}

}  // namespace

DesktopService::~DesktopService() {
  if (!hasSessionBus()) return;
  QDBusConnection::sessionBus().unregisterObject(path);
  QDBusConnection::sessionBus().unregisterService(applicationID);
}

void DesktopService::offer() {
  if (!hasSessionBus()) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  // The object first: with the name, the first call may arrive.
  if (bus.registerVirtualObject(path, this)) bus.registerService(applicationID);
}

QString DesktopService::introspect(const QString&) const {
  return R"(<interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="Open"><arg type="as" name="uris" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/></method>
  <method name="ActivateAction"><arg type="s" name="action_name" direction="in"/><arg type="av" name="parameter" direction="in"/><arg type="a{sv}" name="platform_data" direction="in"/></method>
</interface>
)";
}

bool DesktopService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.interface() != interface) return false;
  const auto request = requestIn(message);
  if (!request) return false;
  connection.send(message.createReply());
  handle_(*request);
  return true;
}

}  // namespace quirn::window
