// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quirn::platform {
namespace {

// Arrays, since a look into a view checks its index, which six bits can't exceed.
constexpr char standardDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char urlSafeDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
constexpr std::string_view base32Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";

constexpr std::uint8_t noDigit = 0xFF;
using DigitValues = std::array<std::uint8_t, 256>;

constexpr void addDigits(DigitValues& values, std::string_view digits) {
  for (std::size_t i = 0; i < digits.size(); ++i)
    values[static_cast<unsigned char>(digits[i])] = static_cast<std::uint8_t>(i);
}

constexpr DigitValues valuesOf(Base64Alphabet alphabet) {
  DigitValues values{};
  values.fill(noDigit);
  addDigits(values, standardDigits);
  if (alphabet == Base64Alphabet::urlSafe) addDigits(values, urlSafeDigits);
  return values;
}

constexpr DigitValues standardValues = valuesOf(Base64Alphabet::standard);
constexpr DigitValues urlSafeValues = valuesOf(Base64Alphabet::urlSafe);

std::uint32_t byteOf(char character) {
  return static_cast<unsigned char>(character);
}

// The last one or two bytes, without padding.
void encodeRest(std::string_view rest, const char* digits, char* out) {
  const std::uint32_t group = byteOf(rest[0]) << 16 | (rest.size() > 1 ? byteOf(rest[1]) << 8 : 0);
  *out++ = digits[group >> 18];
  *out++ = digits[group >> 12 & 63];
  if (rest.size() > 1) *out = digits[group >> 6 & 63];
}

// Appends the bytes of two or three digits, of which the caller knows that they are digits.
void decodeRest(std::string_view digits, const DigitValues& values, std::string& out) {
  std::uint32_t group = 0;
  for (const char digit : digits) group = group << 6 | values[byteOf(digit)];
  group <<= digits.size() == 2 ? 12 : 6;
  for (std::size_t i = 1; i < digits.size(); ++i, group <<= 8) out += static_cast<char>(group >> 16);
}

bool areDigits(std::string_view text, const DigitValues& values) {
  return std::ranges::all_of(text, [&values](char character) { return values[byteOf(character)] != noDigit; });
}

bool isPaddingRight(std::size_t digits, std::size_t padding, Base64Alphabet alphabet) {
  const std::size_t wanted = (4 - digits % 4) % 4;
  if (wanted == 3) return false;
  return alphabet == Base64Alphabet::urlSafe ? padding <= wanted : padding == wanted;
}

}  // namespace

std::string base64Encoded(std::string_view bytes, Base64Alphabet alphabet) {
  const bool padded = alphabet == Base64Alphabet::standard;
  const char* const digits = padded ? standardDigits : urlSafeDigits;
  const std::size_t rest = bytes.size() % 3;
  std::string text(bytes.size() / 3 * 4 + (rest == 0 ? 0 : padded ? 4 : rest + 1), '=');
  char* out = text.data();
  const char* in = bytes.data();
  for (std::size_t groups = bytes.size() / 3; groups > 0; --groups, in += 3) {
    const std::uint32_t group = byteOf(in[0]) << 16 | byteOf(in[1]) << 8 | byteOf(in[2]);
    *out++ = digits[group >> 18];
    *out++ = digits[group >> 12 & 63];
    *out++ = digits[group >> 6 & 63];
    *out++ = digits[group & 63];
  }
  if (rest != 0) encodeRest(bytes.substr(bytes.size() - rest), digits, out);
  return text;
}

std::optional<std::string> base64Decoded(std::string_view text, Base64Alphabet alphabet) {
  const DigitValues& values = alphabet == Base64Alphabet::standard ? standardValues : urlSafeValues;
  const std::size_t digits = text.find_last_not_of('=') + 1;
  if (!isPaddingRight(digits, text.size() - digits, alphabet)) return std::nullopt;
  text = text.substr(0, digits);

  const std::size_t groups = text.size() / 4;
  std::string bytes(groups * 3, '\0');
  char* out = bytes.data();
  std::uint32_t seen = 0;  // has a high bit set once something was no digit
  for (std::size_t i = 0; i < groups; ++i) {
    const char* const in = text.data() + 4 * i;
    const std::uint32_t a = values[byteOf(in[0])], b = values[byteOf(in[1])];
    const std::uint32_t c = values[byteOf(in[2])], d = values[byteOf(in[3])];
    seen |= a | b | c | d;
    const std::uint32_t group = a << 18 | b << 12 | c << 6 | d;
    *out++ = static_cast<char>(group >> 16);
    *out++ = static_cast<char>(group >> 8);
    *out++ = static_cast<char>(group);
  }
  const std::string_view rest = text.substr(groups * 4);
  if ((seen & 0x80) != 0 || !areDigits(rest, values)) return std::nullopt;
  if (!rest.empty()) decodeRest(rest, values, bytes);
  return bytes;
}

std::string base32Encoded(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 4) / 5 * 8);
  std::uint32_t bits = 0;
  int count = 0;
  for (const char byte : bytes) {
    bits = bits << 8 | byteOf(byte);
    for (count += 8; count >= 5; count -= 5) text += base32Digits[bits >> (count - 5) & 31];
  }
  if (count > 0) text += base32Digits[bits << (5 - count) & 31];
  text.append((8 - text.size() % 8) % 8, '=');
  return text;
}

}  // namespace quirn::platform
