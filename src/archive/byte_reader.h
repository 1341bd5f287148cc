// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A cursor over bytes that somebody else keeps. Numbers are little-endian and stand at any alignment.

#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>

namespace quirn {

class ByteReader {
 public:
  // A read past the end. What was left of the bytes counts as read.
  struct OutOfBounds : std::exception {
    const char* what() const noexcept override { return "The data ends too early."; }
  };

  explicit ByteReader(std::span<const std::byte> bytes, std::uint64_t position = 0);

  std::size_t position() const { return position_; }
  std::size_t left() const { return bytes_.size() - position_; }

  // Each throws OutOfBounds.
  std::uint8_t readByte() { return static_cast<std::uint8_t>(readNumber(1)); }
  std::uint16_t read16() { return static_cast<std::uint16_t>(readNumber(2)); }
  std::uint32_t read32() { return static_cast<std::uint32_t>(readNumber(4)); }
  std::uint64_t read64() { return readNumber(8); }
  // A view of the next `count` bytes.
  std::span<const std::byte> read(std::uint64_t count) {
    if (count > left()) overrun();
    const auto run = bytes_.subspan(position_, static_cast<std::size_t>(count));
    position_ += run.size();
    return run;
  }
  void skip(std::uint64_t count) { read(count); }

 private:
  [[noreturn]] void overrun();
  std::uint64_t readNumber(std::size_t size) {
    const auto run = read(size);
    std::uint64_t number = 0;
    for (std::size_t i = size; i-- > 0;) number = number << 8 | std::to_integer<std::uint64_t>(run[i]);
    return number;
  }

  std::span<const std::byte> bytes_;
  std::size_t position_;
};

}  // namespace quirn
