// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The encryption that WinZip brought to ZIP ("AES Encryption Information", AE-1 and AE-2), with 256-bit keys alone.
//
// An encrypted payload is salt, verifier, ciphertext and code, 28 bytes more than what was enciphered. The keys come
// from password and salt; deriving them is what costs, so it is done for several entries at once.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/bytes.h"
#include "platform/cipher.h"
#include "platform/digest.h"
#include "platform/pbkdf2.h"

namespace quirn {

using ZipSalt = platform::Pbkdf2Salt;

struct ZipAesKeys {
  std::array<std::byte, 32> cipher{};
  std::array<std::byte, 32> code{};
  std::array<std::byte, 2> verifier{};
};

inline constexpr std::size_t zipAesOverhead = 28;
// How many keys are best derived together.
inline constexpr std::size_t zipAesBatch = 4;

std::vector<ZipAesKeys> zipAesKeys(std::string_view password, std::span<const ZipSalt> salts);

// From the kernel's generator.
ZipSalt randomZipSalt();

// The salt of an encrypted payload; nothing if it is too short to be one.
std::optional<ZipSalt> zipSaltOf(std::span<const std::byte> payload);

// The counter mode of this format, whose counter begins at 1 and is little-endian. It deciphers what it enciphers.
class ZipCipher {
 public:
  explicit ZipCipher(const ZipAesKeys& keys) : cipher_(keys.cipher) {}

  // Goes on in place.
  void apply(std::span<std::byte> bytes);

 private:
  void makeStream();

  platform::Aes256 cipher_;
  std::uint64_t counter_ = 0;
  std::array<std::byte, 256 * platform::Aes256::blockSize> stream_{};
  std::size_t used_ = stream_.size();
};

// Makes an encrypted payload in pieces: beginning(), any number of encipher(), ending().
class ZipEncryption {
 public:
  ZipEncryption(const ZipSalt& salt, const ZipAesKeys& keys);

  platform::Bytes beginning() const;
  // In place.
  void encipher(std::span<std::byte> bytes);
  platform::Bytes ending();

 private:
  ZipSalt salt_;
  std::array<std::byte, 2> verifier_;
  ZipCipher cipher_;
  platform::KeyedDigest code_;
};

// An encrypted payload in one step.
platform::Bytes encrypted(std::span<const std::byte> plain, const ZipSalt& salt, const ZipAesKeys& keys);

// The ciphertext in an encrypted payload; nothing if the payload is too short, was made with another password, or was
// changed.
std::optional<std::span<const std::byte>> authenticated(std::span<const std::byte> payload, const ZipAesKeys& keys);

}  // namespace quirn
