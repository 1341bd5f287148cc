// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/file_actions.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QUrl>

#include "window/child.h"
#include "window/desktop_settings.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

QList<QUrl> urlsOf(const Paths& files) {
  QList<QUrl> urls;
  for (const auto& file : files) urls << urlOf(file);
  return urls;
}

// Several windows of one folder help nobody, and a hundred programs don't either.
constexpr std::size_t mostOpened = 10;

}  // namespace

void openFiles(const Paths& files) {
  for (std::size_t i = 0; i < std::min(files.size(), mostOpened); ++i) QDesktopServices::openUrl(urlOf(files[i]));
}

void showInFolder(const Paths& files) {
  if (files.empty()) return;
  const auto openFolder = [folder = files.front().parent_path()] { QDesktopServices::openUrl(urlOf(folder)); };
  if (!hasSessionBus()) {
    openFolder();
    return;
  }
  QDBusMessage message = QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                                        "org.freedesktop.FileManager1", "ShowItems");
  message << QUrl::toStringList(urlsOf(files), QUrl::FullyEncoded) << QString();
  auto* const watcher = child<QDBusPendingCallWatcher>(static_cast<QObject*>(QCoreApplication::instance()),
                                                       QDBusConnection::sessionBus().asyncCall(message));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [openFolder](QDBusPendingCallWatcher* call) {
    if (call->isError()) openFolder();
    call->deleteLater();
  });
}

std::unique_ptr<QMimeData> mimeDataOf(const Paths& files) {
  auto data = std::make_unique<QMimeData>();
  data->setUrls(urlsOf(files));
  return data;
}

Paths filesIn(const QMimeData* data) {
  Paths files;
  if (data == nullptr) return files;
  for (const QUrl& url : data->urls()) {
    if (auto file = pathOf(url); !file.empty()) files.push_back(std::move(file));
  }
  return files;
}

}  // namespace quirn::window
