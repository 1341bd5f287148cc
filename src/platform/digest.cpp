// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/digest.h"

#include <fmt/format.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <limits>
#include <stdexcept>

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

std::string hexOf(std::span<const unsigned char> bytes) {
  std::string hex;
  for (const unsigned char byte : bytes) fmt::format_to(std::back_inserter(hex), "{:02x}", byte);
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

std::string Digest::finishHex() {
  std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
  unsigned length = 0;
  require(EVP_DigestFinal_ex(contextIn(state_.get()), bytes.data(), &length));
  return hexOf(std::span(bytes).first(length));
}

std::string hmacHex(DigestAlgorithm algorithm, std::string_view key, std::string_view message) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> bytes{};
  unsigned length = 0;
  if (key.size() > std::numeric_limits<int>::max()) throw std::length_error("key");
  require(HMAC(methodOf(algorithm), key.data(), static_cast<int>(key.size()),
               reinterpret_cast<const unsigned char*>(message.data()), message.size(), bytes.data(),
               &length) != nullptr);
  return hexOf(std::span(bytes).first(length));
}

}  // namespace quirn::platform
