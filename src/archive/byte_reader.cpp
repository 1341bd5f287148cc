// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/byte_reader.h"

#include <algorithm>

namespace quirn {

ByteReader::ByteReader(std::span<const std::byte> bytes, std::uint64_t position)
    : bytes_(bytes), position_(static_cast<std::size_t>(std::min<std::uint64_t>(position, bytes.size()))) {}

void ByteReader::overrun() {
  position_ = bytes_.size();
  throw OutOfBounds();
}

}  // namespace quirn
