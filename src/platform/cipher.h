// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The block cipher AES (FIPS 197) with 256-bit keys.

#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace quirn::platform {

class Aes256 {
 public:
  static constexpr std::size_t keySize = 32;
  static constexpr std::size_t blockSize = 16;

  explicit Aes256(std::span<const std::byte, keySize> key);

  // Enciphers whole blocks in place, each by itself. For building modes of operation; by itself it hides little.
  void encipherBlocks(std::span<std::byte> blocks);

 private:
  struct Freeing {
    void operator()(void* state) const;
  };
  std::unique_ptr<void, Freeing> state_;
};

}  // namespace quirn::platform
