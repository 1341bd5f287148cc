// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/punycode.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/text.h"

namespace quirn {
namespace {

using Fault = PunycodeError::Fault;
using Number = std::uint32_t;

constexpr Number base = 36, tMin = 1, tMax = 26, skew = 38, damp = 700;
constexpr Number initialBias = 72, initialN = 128;
constexpr Number largest = std::numeric_limits<Number>::max();

// The work grows with the square of a label's length. Host names allow 63 characters; from about
// this many on, 32 bits are too few for some labels anyway.
constexpr std::size_t longestLabel = 4096;

// Section 6.1.
Number adapted(Number delta, Number pointCount, bool isFirst) {
  delta = isFirst ? delta / damp : delta / 2;
  delta += delta / pointCount;
  Number k = 0;
  for (; delta > (base - tMin) * tMax / 2; k += base) delta /= base - tMin;
  return k + (base - tMin + 1) * delta / (delta + skew);
}

Number threshold(Number k, Number bias) {
  return k <= bias ? tMin : std::min(k - bias, tMax);
}

Number product(Number a, Number b) {
  if (b != 0 && a > largest / b) throw PunycodeError(Fault::overflow);
  return a * b;
}

Number sum(Number a, Number b) {
  if (a > largest - b) throw PunycodeError(Fault::overflow);
  return a + b;
}

char digitOf(Number value) {
  return static_cast<char>(value < 26 ? 'a' + value : '0' + (value - 26));
}

Number valueOf(char digit) {
  if (digit >= 'a' && digit <= 'z') return static_cast<Number>(digit - 'a');
  if (digit >= 'A' && digit <= 'Z') return static_cast<Number>(digit - 'A');
  if (digit >= '0' && digit <= '9') return static_cast<Number>(digit - '0') + 26;
  throw PunycodeError(Fault::digit);
}

std::u32string scalarsOf(std::string_view text) {
  std::u32string scalars;
  while (!text.empty()) {
    const auto [value, length] = platform::firstScalar(text);
    scalars += value;
    text.remove_prefix(length);
  }
  return scalars;
}

void appendNumber(std::string& out, Number value, Number bias) {
  Number k = base;
  for (Number t = threshold(k, bias); value >= t; t = threshold(k += base, bias)) {
    out += digitOf(t + (value - t) % (base - t));
    value = (value - t) / (base - t);
  }
  out += digitOf(value);
}

// Takes the digits of one number off the front.
Number takeNumber(std::string_view& digits, Number bias) {
  Number value = 0;
  Number weight = 1;
  for (Number k = base;; k += base) {
    if (digits.empty()) throw PunycodeError(Fault::digit);
    const Number digit = valueOf(digits.front());
    digits.remove_prefix(1);
    value = sum(value, product(digit, weight));
    const Number t = threshold(k, bias);
    if (digit < t) return value;
    weight = product(weight, base - t);
  }
}

}  // namespace

// Section 6.3.
std::string punycodeEncoded(std::string_view label) {
  const std::u32string scalars = scalarsOf(label);
  if (scalars.size() > longestLabel) throw PunycodeError(Fault::overflow);
  std::string out;
  for (const char32_t scalar : scalars) {
    if (scalar < initialN) out += static_cast<char>(scalar);
  }
  const auto basicCount = static_cast<Number>(out.size());
  if (basicCount > 0) out += '-';
  Number delta = 0, n = initialN, bias = initialBias;
  for (Number handled = basicCount; handled < scalars.size(); ++delta, ++n) {
    Number next = largest;
    for (const char32_t scalar : scalars) {
      if (scalar >= n) next = std::min<Number>(next, scalar);
    }
    delta = sum(delta, product(next - n, handled + 1));
    n = next;
    for (const char32_t scalar : scalars) {
      if (scalar < n) delta = sum(delta, 1);
      if (scalar != n) continue;
      appendNumber(out, delta, bias);
      bias = adapted(delta, handled + 1, handled == basicCount);
      delta = 0;
      ++handled;
    }
  }
  return out;
}

// Section 6.2.
std::string punycodeDecoded(std::string_view label) {
  if (label.size() > longestLabel) throw PunycodeError(Fault::overflow);
  const std::size_t delimiter = label.rfind('-');
  std::u32string scalars;
  if (delimiter != std::string_view::npos) {
    for (const char basic : label.substr(0, delimiter)) {
      if (static_cast<unsigned char>(basic) >= 0x80) throw PunycodeError(Fault::basicCodePoint);
      scalars += static_cast<char32_t>(basic);
    }
    label.remove_prefix(delimiter + 1);
  }
  Number n = initialN, i = 0, bias = initialBias;
  for (bool isFirst = true; !label.empty(); isFirst = false) {
    const Number delta = takeNumber(label, bias);
    const auto count = static_cast<Number>(scalars.size() + 1);
    bias = adapted(delta, count, isFirst);
    i = sum(i, delta);
    n = sum(n, i / count);
    i %= count;
    if (!platform::isScalar(n)) throw PunycodeError(Fault::codePoint);
    scalars.insert(scalars.begin() + i, n);
    ++i;
  }
  std::string text;
  for (const char32_t scalar : scalars) platform::appendUtf8(text, scalar);
  return text;
}

}  // namespace quirn
