// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text.h"

#include <fmt/format.h>

#include <cstddef>

namespace quirn::platform {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

unsigned char byteAt(std::string_view bytes, std::size_t index) {
  return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0;
}

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
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

void appendUtf8(std::string& text, std::uint32_t codePoint) {
  const auto append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (codePoint < 0x80) return append(codePoint);
  if (codePoint < 0x800) {
    append(0xC0 | codePoint >> 6);
  } else if (codePoint < 0x10000) {
    append(0xE0 | codePoint >> 12);
    append(0x80 | (codePoint >> 6 & 0x3F));
  } else {
    append(0xF0 | codePoint >> 18);
    append(0x80 | (codePoint >> 12 & 0x3F));
    append(0x80 | (codePoint >> 6 & 0x3F));
  }
  append(0x80 | (codePoint & 0x3F));
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
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

std::string_view utf8Prefix(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && isContinuation(byteAt(text, bytes))) --bytes;
  return text.substr(0, bytes);
}

}  // namespace quirn::platform
