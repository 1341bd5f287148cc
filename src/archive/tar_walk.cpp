// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/tar_walk.h"

#include <algorithm>
#include <limits>

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

TarEntry entryIn(Span header, std::uint64_t dataOffset) {
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

std::optional<TarEntry> TarWalk::next() {
  for (;;) {
    skip(dataLeft_ + padding_);
    const auto header = readBlock();
    if (!header || isZero(*header)) break;
    TarEntry entry = entryIn(*header, position_);
    // The data may be cut off, or its size be no honest number.
    isWhole_ = entry.size <= left();
    dataLeft_ = std::min(entry.size, left());
    padding_ = (tarBlockSize - dataLeft_ % tarBlockSize) % tarBlockSize;
    if (!entry.name.empty() && !isAboutAnother(entry.typeflag)) return entry;
  }
  size_ = position_;
  return std::nullopt;
}

std::span<const std::byte> TarWalk::read(std::size_t most) {
  const Span piece = take(std::min<std::uint64_t>(most, dataLeft_));
  dataLeft_ -= piece.size();
  return piece;
}

std::span<const std::byte> TarWalk::readAll() {
  const Span first = read(static_cast<std::size_t>(dataLeft_));
  if (dataLeft_ == 0 || first.empty()) return first;
  gathered_.assign(first.begin(), first.end());
  while (dataLeft_ > 0) {
    const Span piece = read(static_cast<std::size_t>(dataLeft_));
    if (piece.empty()) break;
    platform::append(gathered_, piece);
  }
  return gathered_;
}

// None where the archive ends, whatever its size was said to be.
Span TarWalk::take(std::uint64_t most) {
  const auto count = static_cast<std::size_t>(std::min(most, left()));
  const Span piece = count == 0 ? Span() : source_(count);
  position_ += piece.size();
  if (piece.empty() && count > 0) size_ = position_;
  return piece;
}

void TarWalk::skip(std::uint64_t count) {
  dataLeft_ = padding_ = 0;
  while (count > 0) {
    const Span piece = take(count);
    if (piece.empty()) return;
    count -= piece.size();
  }
}

std::optional<TarBlock> TarWalk::readBlock() {
  TarBlock block;
  std::span<std::byte> room(block);
  while (!room.empty()) {
    const Span piece = take(room.size());
    if (piece.empty()) return std::nullopt;
    std::ranges::copy(piece, room.begin());
    room = room.subspan(piece.size());
  }
  return block;
}

TarWalk::Source sourceOver(Span bytes) {
  return [rest = bytes](std::size_t most) mutable {
    const Span piece = rest.first(std::min(most, rest.size()));
    rest = rest.subspan(piece.size());
    return piece;
  };
}

std::vector<TarEntry> listTarEntries(Span bytes) {
  TarWalk walk(sourceOver(bytes), bytes.size());
  std::vector<TarEntry> entries;
  while (auto entry = walk.next()) entries.push_back(std::move(*entry));
  return entries;
}

}  // namespace quirn
