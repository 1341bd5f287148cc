// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/drop_area.h"

#include <QPainter>

#include "window/child.h"
#include "window/colors.h"
#include "window/icon.h"
#include "window/parts.h"

namespace quirn::window {
namespace {

class Picture final : public QWidget {
 public:
  explicit Picture(QWidget* parent) : QWidget(parent) { setFixedSize(96, 96); }

 protected:
  void paintEvent(QPaintEvent*) override {
    const Colors colors(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(colors.surface, colors.accent, 0.12));
    painter.drawEllipse(rect());
    painter.drawPixmap(24, 23, iconPixmap("tray", 48, colors.accent, devicePixelRatioF()));
  }
};

}  // namespace

DropArea::DropArea(const std::function<void()>& addFiles, const std::function<void()>& paste, QWidget* parent)
    : QWidget(parent) {
  setObjectName("dropArea");
  auto* const layout = layoutOf<QVBoxLayout>(this, 8, {24, 24, 24, 24});
  layout->addStretch(4);
  layout->addWidget(child<Picture>(this), 0, Qt::AlignHCenter);
  layout->addSpacing(10);
  QLabel* const title = label(this, "Drop files here", 1.5, Weight::strong);
  title->setAlignment(Qt::AlignCenter);
  layout->addWidget(title);
  QLabel* const more =
      quietLabel(this, "Quirn proposes what can be done with exactly those files.\nEverything stays on this computer.");
  more->setAlignment(Qt::AlignCenter);
  layout->addWidget(more);
  layout->addSpacing(12);
  auto* const row = layoutIn<QHBoxLayout>(layout, 10);
  QPushButton* const choose = button(this, "plus", "Choose Files…");
  choose->setObjectName("chooseFiles");
  QPushButton* const pasting = button(this, "paste", "Paste");
  pasting->setToolTip("Paste files or an image (Ctrl+V)");
  connect(choose, &QPushButton::clicked, this, addFiles);
  connect(pasting, &QPushButton::clicked, this, paste);
  row->addStretch();
  row->addWidget(choose);
  row->addWidget(pasting);
  row->addStretch();
  layout->addStretch(5);
}

void DropArea::paintEvent(QPaintEvent*) {
  const Colors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPen pen(mixed(colors.border, colors.text, 0.12), 1.5);
  pen.setDashPattern({5, 4});
  painter.setPen(pen);
  painter.drawRoundedRect(QRectF(rect()).adjusted(14, 14, -14, -14), 12, 12);
}

}  // namespace quirn::window
