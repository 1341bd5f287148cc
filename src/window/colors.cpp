// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/colors.h"

#include <array>

namespace quirn::window {
namespace {

struct Base {
  QColor window, surface, text, secondary, border, accent, onAccent;
};

Base baseOf(Scheme scheme) {
  if (scheme == Scheme::dark) {
    return {QColor(0x16191d), QColor(0x1f2329), QColor(0xe9ebee), QColor(0xa0a8b3),
            QColor(0x343a43), QColor(0x6ea3ff), QColor(0x0c1522)};
  }
  return {QColor(0xf4f5f7), QColor(0xffffff), QColor(0x1a1e24), QColor(0x59626e),
          QColor(0xd9dde3), QColor(0x2b66d4), QColor(0xffffff)};
}

// A hue in degrees, as text or a line of an icon on a surface.
QColor readable(int hue, Scheme scheme) {
  return scheme == Scheme::dark ? QColor::fromHsl(hue, 165, 178) : QColor::fromHsl(hue, 150, 96);
}

}  // namespace

QColor mixed(const QColor& under, const QColor& over, double amount) {
  const auto channel = [amount](float from, float to) {
    return static_cast<float>(static_cast<double>(from) * (1 - amount) + static_cast<double>(to) * amount);
  };
  return QColor::fromRgbF(channel(under.redF(), over.redF()), channel(under.greenF(), over.greenF()),
                          channel(under.blueF(), over.blueF()));
}

QPalette ownPalette(Scheme scheme) {
  const Base base = baseOf(scheme);
  QPalette palette;
  const auto set = [&palette](const QColor& color, std::initializer_list<QPalette::ColorRole> roles) {
    for (const QPalette::ColorRole role : roles) palette.setColor(role, color);
  };
  set(base.window, {QPalette::Window});
  set(base.surface, {QPalette::Base, QPalette::Button, QPalette::ToolTipBase});
  set(mixed(base.surface, base.window, 0.6), {QPalette::AlternateBase});
  set(base.text, {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText});
  set(base.secondary, {QPalette::PlaceholderText});
  set(base.border, {QPalette::Mid, QPalette::Midlight});
  set(mixed(base.border, base.text, 0.3), {QPalette::Dark});
  set(base.surface, {QPalette::Light});
  set(QColor(0, 0, 0, 60), {QPalette::Shadow});
  set(base.accent, {QPalette::Highlight, QPalette::Link});
  set(base.onAccent, {QPalette::HighlightedText, QPalette::BrightText});
  const QColor faded = mixed(base.window, base.text, 0.42);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, faded);
  return palette;
}

Colors::Colors(const QPalette& palette)
    : scheme(palette.color(QPalette::Window).lightnessF() < 0.5F ? Scheme::dark : Scheme::light),
      window(palette.color(QPalette::Window)),
      surface(palette.color(QPalette::Base)),
      text(palette.color(QPalette::WindowText)),
      secondary(mixed(text, window, 0.34)),
      border(mixed(window, text, scheme == Scheme::dark ? 0.17 : 0.14)),
      hover(mixed(surface, text, 0.055)),
      accent(palette.color(QPalette::Highlight)),
      onAccent(palette.color(QPalette::HighlightedText)),
      danger(readable(2, scheme)) {}

QColor Colors::of(OperationCategory category) const {
  // In the order of the categories; neighbours differ.
  constexpr std::array hues{4, 268, 190, 28, 322, 40, 212, 226, 172, 292, 250, 152, 14, 130, 340, 204, 276};
  return readable(hues.at(static_cast<std::size_t>(category)), scheme);
}

QColor Colors::of(BannerStyle style) const {
  switch (style) {
    case BannerStyle::success: return readable(145, scheme);
    case BannerStyle::warning: return readable(34, scheme);
    case BannerStyle::error: return danger;
    case BannerStyle::info: break;
  }
  return accent;
}

}  // namespace quirn::window
