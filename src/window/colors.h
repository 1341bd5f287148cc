// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The colors of the window. All of them follow from a palette, so that they are the desktop's where it
// states one, and a palette of Quirn's own, light or dark, where it doesn't.

#pragma once

#include <QColor>
#include <QPalette>

#include "core/banner_center.h"
#include "core/operation_category.h"

namespace quirn::window {

enum class Scheme { light, dark };

QPalette ownPalette(Scheme scheme);

struct Colors {
  explicit Colors(const QPalette& palette);

  Scheme scheme;
  QColor window;
  QColor surface;  // of cards, lists and fields
  QColor text;
  QColor secondary;  // text of less weight; readable on both of the above
  QColor border;
  QColor hover;  // behind what the pointer is on
  QColor accent;
  QColor onAccent;
  QColor danger;

  QColor of(OperationCategory category) const;
  QColor of(BannerStyle style) const;
};

// `amount` of `over` on `under`, from 0 to 1.
QColor mixed(const QColor& under, const QColor& over, double amount);

}  // namespace quirn::window
