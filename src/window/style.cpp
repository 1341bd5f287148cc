// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/style.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>

#include "window/colors.h"
#include "window/icon.h"

namespace quirn::window {
namespace {

constexpr int controlHeight = 34;
constexpr double radius = 7;

void roundedBox(QPainter* painter, const QRectF& place, double corner, const QColor& fill, const QColor& line,
                double width = 1) {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(line.alpha() == 0 ? QPen(Qt::NoPen) : QPen(line, width));
  painter->setBrush(fill.alpha() == 0 ? QBrush(Qt::NoBrush) : QBrush(fill));
  const double inset = line.alpha() == 0 ? 0 : width / 2;
  painter->drawRoundedRect(place.adjusted(inset, inset, -inset, -inset), corner, corner);
  painter->restore();
}

void focusRing(QPainter* painter, const QRect& place, const Colors& colors, double corner = radius) {
  roundedBox(painter, place, corner, Qt::transparent, colors.accent, 2);
}

bool is(const QStyleOption* option, QStyle::StateFlag flag) {
  return option->state.testFlag(flag);
}

bool isQuiet(const QWidget* widget) {
  return widget != nullptr && widget->property(quietProperty).toBool();
}

void drawButton(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
  const Colors colors(option->palette);
  const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
  const bool isDefault = button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
  const bool isEnabled = is(option, QStyle::State_Enabled);
  const bool isPressed = is(option, QStyle::State_Sunken);
  const bool isHovered = isEnabled && is(option, QStyle::State_MouseOver);
  QColor fill = colors.surface;
  QColor line = colors.border;
  if (is(option, QStyle::State_On)) {
    fill = mixed(colors.surface, colors.accent, 0.14);
    line = colors.accent;
  } else if (isDefault && isEnabled) {
    fill = line = mixed(colors.accent, colors.text, isPressed ? 0.25 : isHovered ? 0.12 : 0);
  } else if (isQuiet(widget)) {
    fill =
        isHovered || isPressed ? mixed(colors.window, colors.text, isPressed ? 0.13 : 0.07) : QColor(Qt::transparent);
    line = Qt::transparent;
  } else if (isPressed || isHovered) {
    fill = mixed(colors.surface, colors.text, isPressed ? 0.1 : 0.045);
  }
  if (!isEnabled && !isQuiet(widget)) fill = mixed(colors.window, colors.surface, 0.5);
  roundedBox(painter, option->rect, radius, fill, line);
}

void drawField(const QStyleOption* option, QPainter* painter) {
  const Colors colors(option->palette);
  const bool isFocused = is(option, QStyle::State_HasFocus) && is(option, QStyle::State_Enabled);
  roundedBox(painter, option->rect, radius, is(option, QStyle::State_Enabled) ? colors.surface : colors.window,
             isFocused ? colors.accent : colors.border, isFocused ? 2 : 1);
}

void drawSwitch(const QStyleOption* option, QPainter* painter) {
  const Colors colors(option->palette);
  const bool isOn = is(option, QStyle::State_On);
  const double height = 20;
  const QRectF track(option->rect.x(), option->rect.center().y() + 1 - height / 2, 36, height);
  const QColor off = mixed(colors.surface, colors.text, is(option, QStyle::State_MouseOver) ? 0.34 : 0.28);
  QColor fill = isOn ? colors.accent : off;
  if (!is(option, QStyle::State_Enabled)) fill = mixed(colors.window, fill, 0.4);
  roundedBox(painter, track, height / 2, fill, Qt::transparent);
  const double knob = height - 6;
  const QRectF place(isOn ? track.right() - knob - 3 : track.left() + 3, track.top() + 3, knob, knob);
  roundedBox(painter, place, knob / 2, isOn ? colors.onAccent : colors.surface, Qt::transparent);
}

void drawChevron(const QStyleOption* option, QPainter* painter, std::string_view name, int size = 16) {
  const Colors colors(option->palette);
  const QColor color = is(option, QStyle::State_Enabled) ? colors.secondary : colors.border;
  const double ratio = painter->device()->devicePixelRatioF();
  const QPoint corner = option->rect.center() - QPoint(size / 2 - 1, size / 2 - 1);
  painter->drawPixmap(corner, iconPixmap(name, size, color, ratio));
}

void drawProgress(const QStyleOptionProgressBar& bar, QPainter* painter) {
  const Colors colors(bar.palette);
  const QRectF groove(bar.rect.x(), bar.rect.center().y() - 2, bar.rect.width(), 6);
  roundedBox(painter, groove, 3, mixed(colors.surface, colors.text, 0.12), Qt::transparent);
  const double span = bar.maximum - bar.minimum;
  if (span <= 0 || bar.progress <= bar.minimum) return;
  QRectF filled = groove;
  filled.setWidth(qMax(6.0, groove.width() * (bar.progress - bar.minimum) / span));
  roundedBox(painter, filled, 3, colors.accent, Qt::transparent);
}

void drawScrollBar(const QStyle& style, const QStyleOptionSlider& bar, QPainter* painter, const QWidget* widget) {
  const Colors colors(bar.palette);
  QRectF thumb = style.subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, widget);
  if (bar.maximum <= bar.minimum) return;
  thumb = bar.orientation == Qt::Vertical ? thumb.adjusted(3, 2, -3, -2) : thumb.adjusted(2, 3, -2, -3);
  const bool isActive = is(&bar, QStyle::State_MouseOver) || is(&bar, QStyle::State_Sunken);
  roundedBox(painter, thumb, 3, mixed(colors.surface, colors.text, isActive ? 0.45 : 0.25), Qt::transparent);
}

void drawSlider(const QStyle& style, const QStyleOptionSlider& slider, QPainter* painter, const QWidget* widget) {
  const Colors colors(slider.palette);
  const QRect handle = style.subControlRect(QStyle::CC_Slider, &slider, QStyle::SC_SliderHandle, widget);
  const QRectF groove(slider.rect.x() + 2, slider.rect.center().y() - 1, slider.rect.width() - 4, 4);
  roundedBox(painter, groove, 2, mixed(colors.surface, colors.text, 0.18), Qt::transparent);
  QRectF filled = groove;
  filled.setRight(handle.center().x());
  const QColor accent = is(&slider, QStyle::State_Enabled) ? colors.accent : colors.border;
  roundedBox(painter, filled, 2, accent, Qt::transparent);
  const QPointF middle = QRectF(handle).center();
  const QRectF knob(middle.x() - 8, slider.rect.center().y() - 7, 16, 16);
  roundedBox(painter, knob, 8, colors.surface, accent, 2);
  if (is(&slider, QStyle::State_HasFocus))
    roundedBox(painter, knob.adjusted(-3, -3, 3, 3), 11, Qt::transparent, accent, 2);
}

}  // namespace

Style::Style(Motion motion) : QProxyStyle(QStyleFactory::create("Fusion")), motion_(motion) {}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_ButtonMargin: return 22;
    case PM_ButtonIconSize:
    case PM_SmallIconSize: return 18;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical: return 0;
    case PM_IndicatorWidth: return 36;
    case PM_IndicatorHeight: return 22;
    case PM_CheckBoxLabelSpacing: return 10;
    case PM_ScrollBarExtent: return 12;
    case PM_ScrollBarSliderMin: return 36;
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness: return 22;
    case PM_MenuPanelWidth: return 4;
    default: return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_Widget_Animation_Duration: return motion_ == Motion::reduced ? 0 : 160;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_ComboBox_Popup: return 0;
    case SH_Slider_AbsoluteSetButtons: return Qt::LeftButton;
    default: return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                              const QWidget* widget) const {
  QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
  switch (type) {
    case CT_PushButton: {
      const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
      const bool isIconAlone = button != nullptr && button->text.isEmpty();
      return {isIconAlone ? controlHeight : result.width(), controlHeight};
    }
    case CT_LineEdit:
    case CT_ComboBox:
    case CT_SpinBox: result.setHeight(controlHeight); break;
    case CT_MenuItem: result.setHeight(qMax(result.height(), 30)); break;
    default: break;
  }
  return result;
}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  switch (element) {
    case PE_PanelButtonCommand: drawButton(option, painter, widget); return;
    case PE_FrameDefaultButton: return;
    case PE_PanelLineEdit:
      // Fields inside of other controls have those controls' frames.
      if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option); frame && frame->lineWidth > 0)
        drawField(option, painter);
      return;
    case PE_FrameLineEdit: drawField(option, painter); return;
    case PE_IndicatorCheckBox: drawSwitch(option, painter); return;
    case PE_FrameFocusRect: focusRing(painter, option->rect.adjusted(-1, -1, 1, 1), Colors(option->palette)); return;
    case PE_IndicatorArrowDown:
    case PE_IndicatorSpinDown: drawChevron(option, painter, "chevron-down", 12); return;
    case PE_IndicatorArrowUp:
    case PE_IndicatorSpinUp: drawChevron(option, painter, "chevron-up", 12); return;
    default: QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
  switch (element) {
    case CE_PushButton:
      drawControl(CE_PushButtonBevel, option, painter, widget);
      drawControl(CE_PushButtonLabel, option, painter, widget);
      // A click leaves the focus where it was aimed; only the keyboard has to see where it is.
      if (is(option, State_HasFocus) && is(option, State_KeyboardFocusChange))
        focusRing(painter, option->rect, Colors(option->palette));
      return;
    case CE_PushButtonLabel: {
      const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
      if (button == nullptr) break;
      QStyleOptionButton label = *button;
      label.state.setFlag(State_HasFocus, false);
      if (label.features.testFlag(QStyleOptionButton::DefaultButton) && is(option, State_Enabled)) {
        label.palette.setColor(QPalette::ButtonText, Colors(option->palette).onAccent);
      }
      QProxyStyle::drawControl(element, &label, painter, widget);
      return;
    }
    case CE_ProgressBar:
      if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option)) drawProgress(*bar, painter);
      return;
    default: break;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
  const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_ScrollBar && slider != nullptr) {
    drawScrollBar(*this, *slider, painter, widget);
  } else if (control == CC_Slider && slider != nullptr) {
    drawSlider(*this, *slider, painter, widget);
  } else if (control == CC_ComboBox || control == CC_SpinBox) {
    drawField(option, painter);
    const bool isCombo = control == CC_ComboBox;
    for (const SubControl part :
         {isCombo ? SC_ComboBoxArrow : SC_SpinBoxDown, isCombo ? SC_ComboBoxArrow : SC_SpinBoxUp}) {
      QStyleOption arrow = *option;
      arrow.rect = subControlRect(control, option, part, widget);
      drawChevron(&arrow, painter, part == SC_SpinBoxUp ? "chevron-up" : "chevron-down", isCombo ? 16 : 12);
    }
  } else {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
}

}  // namespace quirn::window
