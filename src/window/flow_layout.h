// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Widgets side by side, in as many lines as their widths need.

#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace quirn::window {

class FlowLayout final : public QLayout {
 public:
  FlowLayout(int horizontalGap, int verticalGap, QWidget* parent)
      : QLayout(parent), horizontalGap_(horizontalGap), verticalGap_(verticalGap) {}

  void addItem(QLayoutItem* item) override { items_.emplace_back(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return heightIn({0, 0, width, 0}); }
  QSize sizeHint() const override { return minimumSize(); }
  QSize minimumSize() const override;
  void setGeometry(const QRect& place) override;

 private:
  // Calls `take` with each item that is shown and its place; gives the height of all.
  template <class Take>
  int walk(const QRect& place, const Take& take) const;
  int heightIn(const QRect& place) const;

  int horizontalGap_;
  int verticalGap_;
  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

}  // namespace quirn::window
