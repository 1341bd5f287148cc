// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/qt_text.h"

#include <QDir>

#include "core/url.h"
#include "platform/text.h"

namespace quirn::window {

QString toQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string fromQt(const QString& text) {
  return text.toStdString();
}

QString shownName(std::string_view name) {
  return toQt(platform::displayText(name));
}

QString shownFolder(const std::filesystem::path& folder) {
  const QString path = shownName(folder.native());
  const QString home = QDir::homePath();
  if (path == home) return "~";
  return path.startsWith(home + "/") ? "~" + path.mid(home.size()) : path;
}

QUrl urlOf(const std::filesystem::path& path) {
  const QByteArray bytes = QByteArray::fromStdString(path.native());
  return QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/"), QUrl::StrictMode);
}

std::filesystem::path pathOf(const QUrl& url) {
  const auto parsed = parseUrl(url.toEncoded().toStdString());
  if (!parsed || parsed->scheme != "file" || !(parsed->host.empty() || parsed->host == "localhost")) return {};
  return filePath(parsed->path).value_or(std::filesystem::path());
}

}  // namespace quirn::window
