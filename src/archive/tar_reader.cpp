// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <limits>

#include "archive/tar.h"
#include "platform/text.h"

namespace quirn {
namespace {

using Span = std::span<const std::byte>;

constexpr std::uint64_t mostNumber = std::numeric_limits<std::uint64_t>::max();

// Up to the first NUL.
std::string textIn(Span field) {
  const std::string_view text = platform::textOf(field);
  return platform::repairedUtf8(text.substr(0, text.find('\0')));
}

// Digit by digit, in GNU's base 256; what is too large becomes the largest number.
std::uint64_t base256In(Span field) {
  std::uint64_t number = 0;
  for (const std::byte byte : field) {
    if (number > mostNumber >> 8) return mostNumber;
    number = number << 8 | std::to_integer<std::uint64_t>(byte);
  }
  return number;
}

std::uint64_t numberIn(Span field) {
  if ((field.front() & std::byte{0x80}) != std::byte{}) return base256In(field.subspan(1));
  std::uint64_t number = 0;
  for (const std::byte byte : field) {
    const auto digit = std::to_integer<unsigned>(byte) - '0';
    if (digit < 8) number = number * 8 + digit;
  }
  return number;
}

std::chrono::sys_seconds dateOf(std::uint64_t seconds) {
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  return std::chrono::sys_seconds(std::chrono::seconds(static_cast<std::int64_t>(std::min(seconds, most))));
}

// A record about the entry behind it, of GNU or pax.
bool isAboutAnother(std::uint8_t typeflag) {
  return typeflag == 'K' || typeflag == 'L' || typeflag == 'x' || typeflag == 'g';
}

TarEntry entryIn(Span header, std::size_t dataOffset) {
  TarEntry entry;
  entry.name = textIn(header.subspan(0, 100));
  if (const std::string prefix = textIn(header.subspan(345, 155)); !prefix.empty())
    entry.name = prefix + "/" + entry.name;
  entry.mode = static_cast<std::uint16_t>(numberIn(header.subspan(100, 8)));
  entry.size = numberIn(header.subspan(124, 12));
  entry.modified = dateOf(numberIn(header.subspan(136, 12)));
  entry.typeflag = std::to_integer<std::uint8_t>(header[156]);
  entry.linkName = textIn(header.subspan(157, 100));
  entry.isDirectory = entry.typeflag == tarFolder || entry.name.ends_with('/');
  entry.dataOffset = static_cast<std::int64_t>(dataOffset);
  return entry;
}

bool isZero(Span block) {
  return std::ranges::all_of(block, [](std::byte byte) { return byte == std::byte{}; });
}

}  // namespace

std::vector<TarEntry> listTarEntries(Span bytes) {
  std::vector<TarEntry> entries;
  for (std::size_t position = 0; bytes.size() - position >= tarBlockSize;) {
    const Span header = bytes.subspan(position, tarBlockSize);
    if (isZero(header)) break;
    position += tarBlockSize;
    TarEntry entry = entryIn(header, position);
    const std::uint64_t size = entry.size;
    if (!entry.name.empty() && !isAboutAnother(entry.typeflag)) entries.push_back(std::move(entry));
    // The data may be cut off, or its size be no honest number.
    if (size > bytes.size() - position) break;
    const std::uint64_t padded = (size + tarBlockSize - 1) / tarBlockSize * tarBlockSize;
    position += static_cast<std::size_t>(std::min<std::uint64_t>(padded, bytes.size() - position));
  }
  return entries;
}

}  // namespace quirn
