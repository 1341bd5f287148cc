// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/percent_coding.h"

#include "platform/text.h"
#include "workbench/hex.h"

namespace quirn {

void appendPercentEncoded(std::string& text, std::string_view bytes) {
  for (const char byte : bytes) appendHexEscape(text, "%", byte);
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
