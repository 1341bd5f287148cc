// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The loop of every escape and unescape: runs of bytes that stay are copied at once, the others go
// through a function.

#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quirn {

using ByteSet = std::array<bool, 256>;

// The bytes for which `isMember`, a function of unsigned char, is true.
template <class IsMember>
constexpr ByteSet bytesWhere(IsMember isMember) {
  ByteSet bytes{};
  for (std::size_t byte = 0; byte < bytes.size(); ++byte) bytes[byte] = isMember(static_cast<unsigned char>(byte));
  return bytes;
}

constexpr ByteSet bytesOf(std::string_view members) {
  return bytesWhere(
      [members](unsigned char byte) { return members.find(static_cast<char>(byte)) != std::string_view::npos; });
}

// A copy of `text` in which `rewrite(result, text, at)` deals with each byte of `special`: it
// appends what takes its place and gives the position, behind `at`, where the copying goes on.
template <class Rewrite>
std::string rewritten(std::string_view text, const ByteSet& special, Rewrite rewrite) {
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at;
    while (end < text.size() && !special[static_cast<unsigned char>(text[end])]) ++end;
    result.append(text, at, end - at);
    at = end < text.size() ? rewrite(result, text, end) : end;
  }
  return result;
}

}  // namespace quirn
