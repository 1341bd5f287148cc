// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Small widgets that every part of the window is made of.

#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <string_view>

namespace quirn::window {

enum class Weight { plain, strong };

// A text that takes as little room as it needs, and is cut with "…" where there is less.
class ElidedLabel final : public QLabel {
 public:
  explicit ElidedLabel(QWidget* parent) : QLabel(parent) { setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); }
  QSize minimumSizeHint() const override { return {40, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A text; `factor` is its size, of the usual.
QLabel* label(QWidget* parent, const QString& text, double factor = 1, Weight weight = Weight::plain);
// A text of less weight.
QLabel* quietLabel(QWidget* parent, const QString& text = {});

// A button with its text beside its drawing.
QPushButton* button(QWidget* parent, std::string_view drawing, const QString& text);
// One without a frame. Without a text, `name` is what it is called and what its tip says.
QPushButton* quietButton(QWidget* parent, std::string_view drawing, const QString& name);
QPushButton* quietTextButton(QWidget* parent, std::string_view drawing, const QString& text);

// A rounded surface with a border.
class Card : public QFrame {
 public:
  explicit Card(QWidget* parent) : QFrame(parent) {}

  // While something may be dropped on it.
  void setTarget(bool isTarget);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isTarget_ = false;
};

// A line between two parts of a card.
QWidget* separator(QWidget* parent);

}  // namespace quirn::window
