// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/flow_layout.h"

#include <algorithm>

namespace quirn::window {

QLayoutItem* FlowLayout::itemAt(int index) const {
  const auto place = static_cast<std::size_t>(index);
  return index < 0 || place >= items_.size() ? nullptr : items_[place].get();
}

QLayoutItem* FlowLayout::takeAt(int index) {
  if (itemAt(index) == nullptr) return nullptr;
  QLayoutItem* const item = items_[static_cast<std::size_t>(index)].release();
  items_.erase(items_.begin() + index);
  return item;
}

template <class Take>
int FlowLayout::walk(const QRect& place, const Take& take) const {
  int x = place.x();
  int y = place.y();
  int lineHeight = 0;
  for (const auto& item : items_) {
    if (item->isEmpty()) continue;
    const QSize size = item->sizeHint().boundedTo({std::max(place.width(), 1), QLAYOUTSIZE_MAX});
    if (x > place.x() && x + size.width() > place.right() + 1) {
      x = place.x();
      y += lineHeight + verticalGap_;
      lineHeight = 0;
    }
    take(*item, QRect(QPoint(x, y), size));
    x += size.width() + horizontalGap_;
    lineHeight = std::max(lineHeight, size.height());
  }
  return y + lineHeight - place.y();
}

int FlowLayout::heightIn(const QRect& place) const {
  return walk(place, [](QLayoutItem&, const QRect&) {});
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto& item : items_) size = size.expandedTo(item->minimumSize());
  return size;
}

void FlowLayout::setGeometry(const QRect& place) {
  QLayout::setGeometry(place);
  walk(place, [](QLayoutItem& item, const QRect& itsPlace) { item.setGeometry(itsPlace); });
}

}  // namespace quirn::window
