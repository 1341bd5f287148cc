// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How Quirn's controls look: flat, rounded, with a visible focus. Built on Qt's Fusion, which does what
// is not drawn here.

#pragma once

#include <QProxyStyle>

namespace quirn::window {

enum class Motion { full, reduced };

// The property of a QPushButton that is drawn without a frame until the pointer is on it.
inline constexpr const char* quietProperty = "quiet";

class Style final : public QProxyStyle {
 public:
  explicit Style(Motion motion);

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;

 private:
  Motion motion_;
};

}  // namespace quirn::window
