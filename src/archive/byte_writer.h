// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Bytes in the making. Numbers are little-endian.

#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/bytes.h"

namespace quirn {

class ByteWriter {
 public:
  ByteWriter& put8(std::uint64_t number) { return put(number, 1); }
  ByteWriter& put16(std::uint64_t number) { return put(number, 2); }
  ByteWriter& put32(std::uint64_t number) { return put(number, 4); }
  ByteWriter& put64(std::uint64_t number) { return put(number, 8); }
  ByteWriter& put(std::string_view text) { return put(platform::bytesOf(text)); }
  ByteWriter& put(std::span<const std::byte> bytes) {
    platform::append(bytes_, bytes);
    return *this;
  }

  const platform::Bytes& bytes() const { return bytes_; }

 private:
  ByteWriter& put(std::uint64_t number, int size) {
    for (int i = 0; i < size; ++i) bytes_.push_back(static_cast<std::byte>(number >> (8 * i) & 0xFF));
    return *this;
  }

  platform::Bytes bytes_;
};

}  // namespace quirn
