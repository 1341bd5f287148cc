// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/icon.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <functional>
#include <memory>

#include "window/colors.h"
#include "window/qt_text.h"

// Qt wants this outside of any namespace.
static void initialiseResources() {
  Q_INIT_RESOURCE(icons);
}

namespace quirn::window {
namespace {

QByteArray drawing(std::string_view name) {
  QFile file(":/quirn/icons/" + toQt(name) + ".svg");
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void paintDrawing(QPainter& painter, std::string_view name, const QRectF& place, const QColor& color) {
  QSvgRenderer renderer(drawing(name).replace("currentColor", color.name().toUtf8()));
  painter.setOpacity(painter.opacity() * color.alphaF());
  renderer.render(&painter, place);
}

// Draws itself in the text color that the application has at that moment.
class DrawingEngine final : public QIconEngine {
 public:
  explicit DrawingEngine(std::string_view name) : name_(name) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    painter->drawPixmap(place, scaledPixmap(place.size() * painter->device()->devicePixelRatioF(), mode, QIcon::Off,
                                            painter->device()->devicePixelRatioF()));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
    const QPalette palette;
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Normal;
    return iconPixmap(name_, qMin(size.width(), size.height()), palette.color(group, QPalette::WindowText), 1);
  }
  QIconEngine* clone() const override { return std::make_unique<DrawingEngine>(*this).release(); }

 private:
  std::string name_;
};

// `kind` tells everything that the painting depends on besides size and resolution.
QPixmap cachedPixmap(const QString& kind, int size, double pixelRatio, const std::function<void(QPainter&)>& paint) {
  const QString key = QString("quirn-%1-%2-%3").arg(kind).arg(size).arg(pixelRatio);
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap(QSize(size, size) * pixelRatio);
  pixmap.setDevicePixelRatio(pixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  paint(painter);
  painter.end();
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

QPixmap tile(std::string_view drawing, int size, const QColor& color, const QPalette& palette, double pixelRatio) {
  const QColor base = palette.color(QPalette::Base);
  const QString kind = QString("tile-%1-%2-%3").arg(toQt(drawing)).arg(color.rgb()).arg(base.rgb());
  return cachedPixmap(kind, size, pixelRatio, [&](QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(base, color, 0.13));
    painter.drawRoundedRect(QRectF(0, 0, size, size), size * 0.26, size * 0.26);
    const double inset = size * 0.21;
    paintDrawing(painter, drawing, QRectF(inset, inset, size - 2 * inset, size - 2 * inset), color);
  });
}

OperationCategory familyOf(FileKind kind) {
  using enum OperationCategory;
  switch (kind) {
    case FileKind::pdf: return pdf;
    case FileKind::image: return image;
    case FileKind::video: return video;
    case FileKind::audio: return audio;
    case FileKind::archive: return archive;
    case FileKind::table: return contacts;
    case FileKind::document: return office;
    case FileKind::folder: return archive;
    case FileKind::text:
    case FileKind::other: break;
  }
  return text;
}

}  // namespace

void loadIcons() {
  initialiseResources();
}

QIcon icon(std::string_view drawing) {
  return QIcon(std::make_unique<DrawingEngine>(drawing).release());
}

QPixmap iconPixmap(std::string_view drawing, int size, const QColor& color, double pixelRatio) {
  return cachedPixmap(QString("icon-%1-%2").arg(toQt(drawing)).arg(color.rgba()), size, pixelRatio,
                      [&](QPainter& painter) { paintDrawing(painter, drawing, QRectF(0, 0, size, size), color); });
}

std::string_view drawingFor(FileKind kind) {
  switch (kind) {
    case FileKind::folder: return "folder";
    case FileKind::pdf: return "doc-rich";
    case FileKind::image: return "photo";
    case FileKind::video: return "film";
    case FileKind::audio: return "music";
    case FileKind::archive: return "archive";
    case FileKind::table: return "table";
    case FileKind::text:
    case FileKind::document: return "doc-text";
    case FileKind::other: break;
  }
  return "doc";
}

QPixmap operationTile(const OperationInfo& info, int size, const QPalette& palette, double pixelRatio) {
  return tile(drawingFor(info.iconName), size, Colors(palette).of(info.category), palette, pixelRatio);
}

QPixmap fileTile(FileKind kind, int size, const QPalette& palette, double pixelRatio) {
  return tile(drawingFor(kind), size, Colors(palette).of(familyOf(kind)), palette, pixelRatio);
}

}  // namespace quirn::window
