// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/clipboard.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <memory>

#include "window/file_actions.h"

namespace quirn::window {
namespace {

std::vector<std::byte> bytesOf(const QByteArray& array) {
  const auto* const first = reinterpret_cast<const std::byte*>(array.constData());
  return {first, first + array.size()};
}

}  // namespace

std::vector<std::filesystem::path> Clipboard::files() const {
  return filesIn(QGuiApplication::clipboard()->mimeData());
}

std::optional<std::vector<std::byte>> Clipboard::imageBytes() const {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr) return std::nullopt;
  if (data->hasFormat("image/png")) return bytesOf(data->data("image/png"));
  if (!data->hasImage()) return std::nullopt;
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  qvariant_cast<QImage>(data->imageData()).save(&buffer, "PNG");
  return bytesOf(png);
}

QString Clipboard::text() {
  return QGuiApplication::clipboard()->text();
}

void Clipboard::setText(const QString& text) {
  QGuiApplication::clipboard()->setText(text);
}

void Clipboard::setFiles(const std::vector<std::filesystem::path>& files) {
  QGuiApplication::clipboard()->setMimeData(mimeDataOf(files).release());  // which the clipboard owns from now on
}

}  // namespace quirn::window
