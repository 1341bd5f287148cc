// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/byte_reader.h"

#include <algorithm>

namespace quirn {

ByteReader::ByteReader(std::span<const std::byte> bytes, std::uint64_t position)
    : bytes_(bytes), position_(static_cast<std::size_t>(std::min<std::uint64_t>(position, bytes.size()))) {}

std::span<const std::byte> ByteReader::read(std::uint64_t count) {
  if (count > left()) {
    position_ = bytes_.size();
    throw OutOfBounds();
  }
  const auto run = bytes_.subspan(position_, static_cast<std::size_t>(count));
  position_ += run.size();
  return run;
}

std::uint64_t ByteReader::readNumber(std::size_t size) {
  const auto run = read(size);
  std::uint64_t number = 0;
  for (std::size_t i = size; i-- > 0;) number = number << 8 | std::to_integer<std::uint64_t>(run[i]);
  return number;
}

}  // namespace quirn
