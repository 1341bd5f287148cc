// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/list_row.h"

#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

#include "window/child.h"
#include "window/colors.h"

namespace quirn::window {
namespace {

constexpr int margin = 14;
constexpr int gap = 12;

QFont scaled(QFont font, double factor, int weight = QFont::Normal) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(static_cast<QFont::Weight>(weight));
  return font;
}

void drawText(QPainter* painter, const QRect& place, const QFont& font, const QColor& color, const QString& text,
              Qt::TextElideMode elide) {
  painter->setFont(font);
  painter->setPen(color);
  painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                    QFontMetrics(font).elidedText(text, elide, place.width()));
}

void drawBackground(QPainter* painter, const QStyleOptionViewItem& option, const Colors& colors) {
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
  const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
  if (!isSelected && !isHovered && !hasFocus) return;
  painter->setRenderHint(QPainter::Antialiasing);
  const QColor fill = isSelected  ? mixed(colors.surface, colors.accent, 0.14)
                      : isHovered ? colors.hover
                                  : colors.surface;
  painter->setBrush(fill);
  painter->setPen(hasFocus ? QPen(colors.accent, 2) : QPen(Qt::NoPen));
  painter->drawRoundedRect(QRectF(option.rect).adjusted(4, 1.5, -4, -1.5), 7, 7);
}

void drawHeading(QPainter* painter, const QStyleOptionViewItem& option, const Colors& colors, const QString& text) {
  const QRect place = option.rect.adjusted(margin, 8, -margin, 0);
  drawText(painter, place, scaled(option.font, 0.9, QFont::DemiBold), colors.secondary, text, Qt::ElideRight);
}

}  // namespace

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  // Headings are disabled, as far as Qt knows; they are drawn like the rest.
  QPalette palette = option.palette;
  palette.setCurrentColorGroup(QPalette::Active);
  const Colors colors(palette);
  const QString title = index.data(Qt::DisplayRole).toString();
  painter->save();
  if (index.data(headingRole).toBool()) {
    drawHeading(painter, option, colors, title);
    painter->restore();
    return;
  }
  drawBackground(painter, option, colors);
  const bool isFaded = index.data(fadedRole).toBool();
  const QRect row = option.rect.adjusted(margin, 0, -margin, 0);
  const int tileSize = density_ == Density::roomy ? 34 : 28;
  const QPoint corner(row.left(), row.center().y() - tileSize / 2 + 1);
  if (isFaded) painter->setOpacity(0.45);
  painter->drawPixmap(corner,
                      index.data(tileRole).value<Tile>()(tileSize, palette, painter->device()->devicePixelRatioF()));
  painter->setOpacity(1);

  QRect text = row.adjusted(tileSize + gap, 0, 0, 0);
  const QString end = index.data(endRole).toString();
  if (!end.isEmpty()) {
    const QFont font = scaled(option.font, 0.92);
    const int width = QFontMetrics(font).horizontalAdvance(end);
    drawText(painter, QRect(text.right() - width, text.top(), width + 1, text.height()), font, colors.secondary, end,
             Qt::ElideNone);
    text.setRight(text.right() - width - gap);
  }
  const QColor titleColor = isFaded ? colors.secondary : colors.text;
  const QString detail = index.data(detailRole).toString();
  if (detail.isEmpty()) {
    drawText(painter, text, option.font, titleColor, title, Qt::ElideMiddle);
  } else {
    const QFont small = scaled(option.font, 0.92);
    const int titleHeight = QFontMetrics(option.font).height();
    const int height = titleHeight + QFontMetrics(small).height() + 1;
    const int top = text.center().y() - height / 2 + 1;
    drawText(painter, {text.left(), top, text.width(), titleHeight}, option.font, titleColor, title, Qt::ElideMiddle);
    drawText(painter, {text.left(), top + titleHeight + 1, text.width(), height - titleHeight}, small, colors.secondary,
             detail, Qt::ElideRight);
  }
  painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int line = QFontMetrics(option.font).height();
  if (index.data(headingRole).toBool()) return {100, line + 16};
  return {100, density_ == Density::roomy ? 2 * line + 20 : 2 * line + 12};
}

RowList::RowList(Activation activation, RowDelegate::Density density, QWidget* parent) : QListView(parent) {
  setItemDelegate(child<RowDelegate>(static_cast<QObject*>(this), density));
  setFrameShape(QFrame::NoFrame);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMouseTracking(true);
  setEditTriggers(NoEditTriggers);
  viewport()->setAutoFillBackground(false);
  const auto activate = [this](const QModelIndex& index) {
    if (onActivate && index.flags().testFlag(Qt::ItemIsEnabled)) onActivate(index);
  };
  if (activation == Activation::byClick) {
    connect(this, &QListView::clicked, this, activate);
    viewport()->setCursor(Qt::PointingHandCursor);
  } else {
    connect(this, &QListView::doubleClicked, this, activate);
  }
}

void RowList::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isReturn && currentIndex().isValid() && onActivate) {
    onActivate(currentIndex());
  } else if (event->key() == Qt::Key_Delete && onDelete) {
    onDelete();
  } else {
    QListView::keyPressEvent(event);
  }
}

void RowList::startDrag(Qt::DropActions) {
  if (!onDrag) return;
  QDrag drag(this);
  drag.setMimeData(onDrag());
  drag.exec(Qt::CopyAction);
}

}  // namespace quirn::window
