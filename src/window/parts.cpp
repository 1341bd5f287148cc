// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/parts.h"

#include <QPainter>

#include "window/child.h"
#include "window/colors.h"
#include "window/icon.h"
#include "window/style.h"

namespace quirn::window {
namespace {

class Line final : public QWidget {
 public:
  explicit Line(QWidget* parent) : QWidget(parent) { setFixedHeight(1); }

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Colors(palette()).border); }
};

}  // namespace

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}

QLabel* label(QWidget* parent, const QString& text, double factor, Weight weight) {
  auto* const made = child<QLabel>(parent, text);
  made->setTextFormat(Qt::PlainText);
  QFont font = made->font();
  font.setPointSizeF(font.pointSizeF() * factor);
  if (weight == Weight::strong) font.setWeight(QFont::DemiBold);
  made->setFont(font);
  return made;
}

QLabel* quietLabel(QWidget* parent, const QString& text) {
  QLabel* const made = label(parent, text, 0.94);
  made->setForegroundRole(QPalette::PlaceholderText);
  return made;
}

QPushButton* button(QWidget* parent, std::string_view drawing, const QString& text) {
  auto* const made =
      drawing.empty() ? child<QPushButton>(parent, text) : child<QPushButton>(parent, icon(drawing), text);
  made->setAutoDefault(false);
  return made;
}

QPushButton* quietButton(QWidget* parent, std::string_view drawing, const QString& name) {
  QPushButton* const made = button(parent, drawing, {});
  made->setProperty(quietProperty, true);
  made->setAccessibleName(name);
  made->setToolTip(name);
  return made;
}

QPushButton* quietTextButton(QWidget* parent, std::string_view drawing, const QString& text) {
  QPushButton* const made = button(parent, drawing, text);
  made->setProperty(quietProperty, true);
  return made;
}

void Card::setTarget(bool isTarget) {
  isTarget_ = isTarget;
  update();
}

void Card::paintEvent(QPaintEvent*) {
  const Colors colors(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(isTarget_ ? QPen(colors.accent, 2) : QPen(colors.border));
  painter.setBrush(isTarget_ ? mixed(colors.surface, colors.accent, 0.06) : colors.surface);
  const double inset = isTarget_ ? 1 : 0.5;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), 12, 12);
}

QWidget* separator(QWidget* parent) {
  return child<Line>(parent);
}

}  // namespace quirn::window
