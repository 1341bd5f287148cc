// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/percent_coding.h"

#include "platform/text.h"
#include "workbench/hex.h"
#include "workbench/rewriting.h"

namespace quirn {
namespace {

constexpr ByteSet reserved = bytesWhere([](unsigned char byte) {
  const auto lower = static_cast<unsigned char>(byte | 0x20);
  const bool isLetter = lower >= 'a' && lower <= 'z';
  const bool isDigit = byte >= '0' && byte <= '9';
  return !isLetter && !isDigit && byte != '-' && byte != '_' && byte != '.' && byte != '~';
});

}  // namespace

void appendPercentEncoded(std::string& text, std::string_view bytes) {
  for (const char byte : bytes) appendHexEscape(text, "%", byte);
}

std::string percentEncoded(std::string_view bytes) {
  return rewritten(bytes, reserved, [](std::string& result, std::string_view text, std::size_t at) {
    appendPercentEncoded(result, text.substr(at, 1));
    return at + 1;
  });
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] != '%') {
      bytes += text[at++];
      continue;
    }
    const auto byte = hexByteAt(text, at + 1);
    if (!byte) return std::nullopt;
    bytes += *byte;
    at += 3;
  }
  return platform::isUtf8(bytes) ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace quirn
