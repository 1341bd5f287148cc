// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A color of sRGB, and the other spaces it is written in.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quirn {

// All from 0 to 1.
struct Color {
  double r = 0;
  double g = 0;
  double b = 0;
  double a = 1;
};

// A name, "#3B82F6" with 3, 4, 6 or 8 digits and with or without its mark, "rgb(…)" or "hsl(…)".
std::optional<Color> colorIn(std::string_view text);

// "#3B82F6", with two digits more where the color is not opaque.
std::string hexText(const Color& color);

// A channel or alpha as a byte.
int byteOf(double value);

// Hues in degrees from 0 to 360, the rest from 0 to 1.
struct Hsl {
  double h, s, l;
};
struct Hsb {
  double h, s, b;
};
struct Cmyk {
  double c, m, y, k;
};
// The polar form of Oklab (Björn Ottosson); chroma of sRGB stays below 0.33.
struct Oklch {
  double l, c, h;
};

Hsl hslOf(const Color& color);
Hsb hsbOf(const Color& color);
Cmyk cmykOf(const Color& color);
Oklch oklchOf(const Color& color);

// As WCAG 2 defines them; alpha is ignored. The ratio is 1 to 21.
double relativeLuminance(const Color& color);
double contrastRatio(const Color& one, const Color& other);

}  // namespace quirn
