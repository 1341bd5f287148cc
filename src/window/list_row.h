// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The rows that files, results and operations are shown as: a tile, a title, a line below it, and at
// times a word at the end. One delegate draws them all; headings between them belong to the same list.

#pragma once

#include <QListView>
#include <QStyledItemDelegate>

namespace quirn::window {

// What a model gives for a row, beside Qt::DisplayRole for its title.
enum RowRole {
  detailRole = Qt::UserRole,  // QString: the line below the title
  tileRole,                   // Tile
  endRole,                    // QString: a word at the end of the row
  headingRole,                // bool: the row is a heading
  fadedRole,                  // bool: what the row stands for can't be had now
};

// Draws the tile at a size in device-independent pixels.
using Tile = std::function<QPixmap(int size, const QPalette& palette, double pixelRatio)>;

class RowDelegate final : public QStyledItemDelegate {
 public:
  enum class Density { roomy, compact };

  RowDelegate(Density density, QObject* parent) : QStyledItemDelegate(parent), density_(density) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  Density density_;
};

// A list without a frame that draws such rows. A click activates a row where `activation` says so;
// Return always does.
class RowList final : public QListView {
 public:
  enum class Activation { byClick, byDoubleClick };

  RowList(Activation activation, RowDelegate::Density density, QWidget* parent);

  std::function<void(const QModelIndex&)> onActivate;
  std::function<void()> onDelete;  // the Delete key
  // What is dragged out of the list; without it nothing is.
  std::function<QMimeData*()> onDrag;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
};

}  // namespace quirn::window

Q_DECLARE_METATYPE(quirn::window::Tile)
