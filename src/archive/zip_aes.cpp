// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_aes.h"

#include <algorithm>

#include "platform/random.h"

namespace quirn {
namespace {

using platform::Bytes;

constexpr int iterations = 1000;
constexpr std::size_t saltSize = 16;
constexpr std::size_t verifierSize = 2;
constexpr std::size_t codeSize = 10;

// Takes the same time wherever they differ.
bool areEqual(std::span<const std::byte> one, std::span<const std::byte> other) {
  if (one.size() != other.size()) return false;
  std::byte difference{};
  for (std::size_t i = 0; i < one.size(); ++i) difference |= one[i] ^ other[i];
  return difference == std::byte{};
}

Bytes shortened(Bytes code) {
  code.resize(codeSize);
  return code;
}

}  // namespace

std::vector<ZipAesKeys> zipAesKeys(std::string_view password, std::span<const ZipSalt> salts) {
  std::vector<ZipAesKeys> all;
  for (const platform::Pbkdf2Key& derived : platform::pbkdf2Sha1(password, salts, iterations)) {
    ZipAesKeys keys;
    auto from = derived.begin();
    for (const std::span<std::byte> part :
         {std::span<std::byte>(keys.cipher), std::span<std::byte>(keys.code), std::span<std::byte>(keys.verifier)}) {
      std::copy_n(from, part.size(), part.begin());
      from += static_cast<std::ptrdiff_t>(part.size());
    }
    all.push_back(keys);
  }
  return all;
}

ZipSalt randomZipSalt() {
  ZipSalt salt;
  platform::fillRandom(salt);
  return salt;
}

std::optional<ZipSalt> zipSaltOf(std::span<const std::byte> payload) {
  if (payload.size() < zipAesOverhead) return std::nullopt;
  ZipSalt salt;
  std::copy_n(payload.begin(), saltSize, salt.begin());
  return salt;
}

void ZipCipher::makeStream() {
  stream_.fill(std::byte{});
  for (std::size_t at = 0; at < stream_.size(); at += platform::Aes256::blockSize) {
    ++counter_;
    for (std::size_t i = 0; i < sizeof counter_; ++i)
      stream_[at + i] = static_cast<std::byte>(counter_ >> (8 * i) & 0xFF);
  }
  cipher_.encipherBlocks(stream_);
  used_ = 0;
}

void ZipCipher::apply(std::span<std::byte> bytes) {
  while (!bytes.empty()) {
    if (used_ == stream_.size()) makeStream();
    const std::size_t count = std::min(bytes.size(), stream_.size() - used_);
    for (std::size_t i = 0; i < count; ++i) bytes[i] ^= stream_[used_ + i];
    used_ += count;
    bytes = bytes.subspan(count);
  }
}

ZipEncryption::ZipEncryption(const ZipSalt& salt, const ZipAesKeys& keys)
    : salt_(salt), verifier_(keys.verifier), cipher_(keys), code_(platform::DigestAlgorithm::sha1, keys.code) {}

Bytes ZipEncryption::beginning() const {
  Bytes bytes(salt_.begin(), salt_.end());
  platform::append(bytes, verifier_);
  return bytes;
}

void ZipEncryption::encipher(std::span<std::byte> bytes) {
  cipher_.apply(bytes);
  code_.update(bytes);
}

Bytes ZipEncryption::ending() {
  return shortened(code_.finish());
}

Bytes encrypted(std::span<const std::byte> plain, const ZipSalt& salt, const ZipAesKeys& keys) {
  ZipEncryption encryption(salt, keys);
  Bytes payload = encryption.beginning();
  platform::append(payload, plain);
  encryption.encipher(std::span(payload).last(plain.size()));
  platform::append(payload, encryption.ending());
  return payload;
}

std::optional<std::span<const std::byte>> authenticated(std::span<const std::byte> payload, const ZipAesKeys& keys) {
  if (payload.size() < zipAesOverhead) return std::nullopt;
  if (!areEqual(payload.subspan(saltSize, verifierSize), keys.verifier)) return std::nullopt;
  const auto ciphertext = payload.first(payload.size() - codeSize).subspan(saltSize + verifierSize);
  platform::KeyedDigest code(platform::DigestAlgorithm::sha1, keys.code);
  code.update(ciphertext);
  if (!areEqual(shortened(code.finish()), payload.last(codeSize))) return std::nullopt;
  return ciphertext;
}

}  // namespace quirn
