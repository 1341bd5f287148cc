// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quirn::platform {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

unsigned char byteAt(std::string_view bytes, std::size_t index) {
  return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0;
}

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

// Eight bytes of ASCII at the beginning, the usual case by far.
bool startsWithAscii(std::string_view bytes) {
  std::uint64_t word = 0;
  if (bytes.size() < sizeof word) return false;
  std::memcpy(&word, bytes.data(), sizeof word);
  return (word & 0x8080808080808080) == 0;
}

// Looks at all of it, which takes less time for names than looking for the first that isn't.
bool isPrintableAscii(std::string_view text) {
  unsigned others = 0;
  for (const char character : text) others |= static_cast<unsigned>(character < 0x20 || character == 0x7F);
  return others == 0;
}

// Unicode's separators, and the controls that end lines or tabulate.
bool isSpace(char32_t scalar) {
  switch (scalar) {
    case 0x20:
    case 0x85:
    case 0xA0:
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x202F:
    case 0x205F:
    case 0x3000: return true;
    default: return (scalar >= 0x09 && scalar <= 0x0D) || (scalar >= 0x2000 && scalar <= 0x200A);
  }
}

std::string_view withoutLeadingSpace(std::string_view text) {
  while (const std::size_t length = leadingSpaceLength(text)) text.remove_prefix(length);
  return text;
}

std::string_view withoutTrailingSpace(std::string_view text) {
  while (!text.empty()) {
    std::size_t start = text.size() - 1;
    while (start > 0 && isContinuation(byteAt(text, start))) --start;
    const Scalar last = firstScalar(text.substr(start));
    if (start + last.length != text.size() || !isSpace(last.value)) break;
    text.remove_suffix(last.length);
  }
  return text;
}

}  // namespace

// The bounds of the second byte keep out overlong forms, surrogates and what lies beyond U+10FFFF.
std::size_t utf8SequenceLength(std::string_view bytes) {
  const unsigned char first = byteAt(bytes, 0);
  const unsigned char second = byteAt(bytes, 1);
  if (first < 0x80) return bytes.empty() ? 0 : 1;
  if (first >= 0xC2 && first <= 0xDF) return isContinuation(second) ? 2 : 0;
  const unsigned char low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const unsigned char high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  if (first < 0xE0 || first > 0xF4 || second < low || second > high) return 0;
  if (!isContinuation(byteAt(bytes, 2))) return 0;
  if (first < 0xF0) return 3;
  return isContinuation(byteAt(bytes, 3)) ? 4 : 0;
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    if (startsWithAscii(bytes)) {
      bytes.remove_prefix(sizeof(std::uint64_t));
      continue;
    }
    const std::size_t length = utf8SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string repairedUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    if (startsWithAscii(bytes)) {
      text += bytes.substr(0, sizeof(std::uint64_t));
      bytes.remove_prefix(sizeof(std::uint64_t));
      continue;
    }
    const std::size_t length = utf8SequenceLength(bytes);
    text += length == 0 ? replacement : bytes.substr(0, length);
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}

std::string utf8FromLatin1(std::string_view bytes) {
  std::string text;
  for (const char character : bytes) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x80) text += static_cast<char>(0xC0 | (byte >> 6));
    text += byte < 0x80 ? character : static_cast<char>(0x80 | (byte & 0x3F));
  }
  return text;
}

std::string latin1FromUtf8(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    const std::size_t length = utf8SequenceLength(text);
    const unsigned char first = byteAt(text, 0);
    if (length == 2 && first <= 0xC3) {
      bytes += static_cast<char>((first << 6) | (byteAt(text, 1) & 0x3F));
    } else {
      bytes += length == 1 ? text.front() : '?';
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return bytes;
}

std::string displayText(std::string_view text) {
  if (isPrintableAscii(text)) return std::string(text);
  std::string shown;
  for (const char character : repairedUtf8(text)) {
    const auto byte = static_cast<unsigned char>(character);
    if (character == '\n') {
      shown += "\\n";
    } else if (byte < 0x20 || byte == 0x7F) {
      shown += fmt::format("\\x{:02x}", byte);
    } else {
      shown += character;
    }
  }
  // U+0080 to U+009F, of which terminals understand U+009B as the beginning of a sequence.
  for (std::size_t at = 0; (at = shown.find('\xC2', at)) != std::string::npos; ++at) {
    const auto second = static_cast<unsigned char>(shown[at + 1]);
    if (second < 0xA0) shown.replace(at, 2, fmt::format("\\x{:02x}", second));
  }
  return shown;
}

bool hasUtf16Mark(std::string_view bytes) {
  return bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
}

std::string utf8FromUtf16(std::string_view bytes) {
  const bool bigEndian = bytes.starts_with("\xFE\xFF");
  const auto unitAt = [&](std::size_t at) -> char32_t {
    const char32_t first = byteAt(bytes, at), second = byteAt(bytes, at + 1);
    return bigEndian ? first << 8 | second : second << 8 | first;
  };
  std::string text;
  for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
    const char32_t unit = unitAt(at);
    const char32_t next = at + 3 < bytes.size() ? unitAt(at + 2) : 0;
    const bool isPair = (unit & 0xFC00) == 0xD800 && (next & 0xFC00) == 0xDC00;
    if (isPair) at += 2;
    const char32_t scalar = isPair ? 0x10000 + ((unit & 0x3FF) << 10 | (next & 0x3FF)) : unit;
    appendUtf8(text, isScalar(scalar) ? scalar : 0xFFFD);
  }
  if (bytes.size() % 2 != 0) text += replacement;
  return text;
}

Scalar firstScalar(std::string_view text) {
  const char32_t first = byteAt(text, 0);
  const auto rest = [text](std::size_t index) -> char32_t { return byteAt(text, index) & 0x3F; };
  switch (utf8SequenceLength(text)) {
    case 1: return {first, 1};
    case 2: return {(first & 0x1F) << 6 | rest(1), 2};
    case 3: return {(first & 0x0F) << 12 | rest(1) << 6 | rest(2), 3};
    case 4: return {(first & 0x07) << 18 | rest(1) << 12 | rest(2) << 6 | rest(3), 4};
    default: return {0xFFFD, 1};
  }
}

bool isScalar(char32_t value) {
  return value < 0xD800 || (value >= 0xE000 && value <= 0x10FFFF);
}

void appendUtf8(std::string& text, char32_t scalar) {
  const auto continuation = [scalar](int shift) { return static_cast<char>(0x80 | (scalar >> shift & 0x3F)); };
  if (scalar < 0x80) {
    text += static_cast<char>(scalar);
  } else if (scalar < 0x800) {
    text += static_cast<char>(0xC0 | scalar >> 6);
    text += continuation(0);
  } else if (scalar < 0x10000) {
    text += static_cast<char>(0xE0 | scalar >> 12);
    text += continuation(6);
    text += continuation(0);
  } else {
    text += static_cast<char>(0xF0 | scalar >> 18);
    text += continuation(12);
    text += continuation(6);
    text += continuation(0);
  }
}

std::size_t leadingSpaceLength(std::string_view text) {
  if (text.empty()) return 0;
  const Scalar first = firstScalar(text);
  return isSpace(first.value) ? first.length : 0;
}

std::string_view trimmed(std::string_view text) {
  return withoutTrailingSpace(withoutLeadingSpace(text));
}

std::string_view utf8Prefix(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && isContinuation(byteAt(text, bytes))) --bytes;
  return text.substr(0, bytes);
}

}  // namespace quirn::platform
