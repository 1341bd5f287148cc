// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/cipher.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <limits>
#include <stdexcept>

namespace quirn::platform {
namespace {

void require(bool succeeded) {
  if (!succeeded) throw std::runtime_error("libcrypto failed");
}

const EVP_CIPHER* method() {
  // As for digests, the machine's configuration of the library is left alone.
  static const EVP_CIPHER* const fetched = [] {
    require(OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr) == 1);
    return EVP_CIPHER_fetch(nullptr, "AES-256-ECB", nullptr);
  }();
  require(fetched != nullptr);
  return fetched;
}

EVP_CIPHER_CTX* contextIn(void* state) {
  return static_cast<EVP_CIPHER_CTX*>(state);
}

}  // namespace

void Aes256::Freeing::operator()(void* state) const {
  EVP_CIPHER_CTX_free(contextIn(state));
}

Aes256::Aes256(std::span<const std::byte, keySize> key) : state_(EVP_CIPHER_CTX_new()) {
  require(state_ != nullptr);
  const auto* bytes = reinterpret_cast<const unsigned char*>(key.data());
  require(EVP_EncryptInit_ex2(contextIn(state_.get()), method(), bytes, nullptr, nullptr) == 1);
  EVP_CIPHER_CTX_set_padding(contextIn(state_.get()), 0);
}

void Aes256::encipherBlocks(std::span<std::byte> blocks) {
  if (blocks.size() % blockSize != 0 || blocks.size() > std::numeric_limits<int>::max())
    throw std::invalid_argument("no whole blocks");
  auto* const bytes = reinterpret_cast<unsigned char*>(blocks.data());
  int written = 0;
  require(EVP_EncryptUpdate(contextIn(state_.get()), bytes, &written, bytes, static_cast<int>(blocks.size())) == 1);
}

}  // namespace quirn::platform
