// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/digest.h"

#include <fmt/format.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <stdexcept>
#include <utility>

namespace quirn::platform {
namespace {

void require(int succeeded) {
  if (succeeded != 1) throw std::runtime_error("libcrypto failed");
}

EVP_MD* fetch(const char* name) {
  // The machine's configuration of the library may load engines and other programs' code; a digest
  // needs none.
  static const int initialised = OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr);
  require(initialised);
  EVP_MD* method = EVP_MD_fetch(nullptr, name, nullptr);
  require(method != nullptr);
  return method;
}

// Fetching costs more than a short digest, so each method is fetched once and kept.
const EVP_MD* methodOf(DigestAlgorithm algorithm) {
  switch (algorithm) {
    case DigestAlgorithm::sha256: {
      static const EVP_MD* const method = fetch("SHA2-256");
      return method;
    }
    case DigestAlgorithm::sha1: {
      static const EVP_MD* const method = fetch("SHA1");
      return method;
    }
    case DigestAlgorithm::sha512: {
      static const EVP_MD* const method = fetch("SHA2-512");
      return method;
    }
    case DigestAlgorithm::md5: {
      static const EVP_MD* const method = fetch("MD5");
      return method;
    }
    case DigestAlgorithm::sha384: {
      static const EVP_MD* const method = fetch("SHA2-384");
      return method;
    }
  }
  throw std::invalid_argument("no such digest");
}

std::string hexOf(std::span<const std::byte> bytes) {
  std::string hex;
  for (const std::byte byte : bytes) fmt::format_to(std::back_inserter(hex), "{:02x}", byte);
  return hex;
}

EVP_MD_CTX* contextIn(void* state) {
  return static_cast<EVP_MD_CTX*>(state);
}

}  // namespace

void Digest::Freeing::operator()(void* state) const {
  EVP_MD_CTX_free(contextIn(state));
}

Digest::Digest(DigestAlgorithm algorithm) : state_(EVP_MD_CTX_new()) {
  require(EVP_DigestInit_ex2(contextIn(state_.get()), methodOf(algorithm), nullptr));
}

void Digest::update(std::span<const std::byte> bytes) {
  require(EVP_DigestUpdate(contextIn(state_.get()), bytes.data(), bytes.size()));
}

Bytes Digest::finish() {
  Bytes bytes(EVP_MAX_MD_SIZE);
  unsigned length = 0;
  require(EVP_DigestFinal_ex(contextIn(state_.get()), reinterpret_cast<unsigned char*>(bytes.data()), &length));
  bytes.resize(length);
  return bytes;
}

std::string Digest::finishHex() {
  return hexOf(finish());
}

Bytes digestOf(DigestAlgorithm algorithm, std::span<const std::byte> bytes) {
  Digest digest(algorithm);
  digest.update(bytes);
  return digest.finish();
}

KeyedDigest::KeyedDigest(DigestAlgorithm algorithm, std::span<const std::byte> key)
    : inner_(algorithm), outer_(algorithm) {
  const auto blockSize = static_cast<std::size_t>(EVP_MD_get_block_size(methodOf(algorithm)));
  const Bytes shortened = key.size() > blockSize ? digestOf(algorithm, key) : Bytes();
  if (!shortened.empty()) key = shortened;
  for (const auto& [digest, pad] : {std::pair(&inner_, std::byte{0x36}), std::pair(&outer_, std::byte{0x5C})}) {
    Bytes padded(key.begin(), key.end());
    padded.resize(blockSize, std::byte{0});
    for (std::byte& byte : padded) byte ^= pad;
    digest->update(padded);
  }
}

void KeyedDigest::update(std::span<const std::byte> bytes) {
  inner_.update(bytes);
}

Bytes KeyedDigest::finish() {
  outer_.update(inner_.finish());
  return outer_.finish();
}

std::string hmacHex(DigestAlgorithm algorithm, std::string_view key, std::string_view message) {
  KeyedDigest digest(algorithm, bytesOf(key));
  digest.update(bytesOf(message));
  return hexOf(digest.finish());
}

}  // namespace quirn::platform
