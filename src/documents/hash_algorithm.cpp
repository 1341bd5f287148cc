// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/hash_algorithm.h"

#include <memory>

#include "core/operation_context.h"
#include "core/operation_error.h"

namespace quirn {
namespace {

// One for each thread that hashes, made when it first does: clearing a new megabyte costs more than
// hashing a small file.
std::span<std::byte> chunkOfThisThread() {
  thread_local const std::unique_ptr<std::byte[]> chunk = std::make_unique_for_overwrite<std::byte[]>(chunkSize);
  return {chunk.get(), chunkSize};
}

}  // namespace

std::string_view label(HashAlgorithm algorithm) {
  switch (algorithm) {
    case HashAlgorithm::sha256: return "SHA-256";
    case HashAlgorithm::sha1: return "SHA-1";
    case HashAlgorithm::sha512: return "SHA-512";
    case HashAlgorithm::md5: return "MD5";
    case HashAlgorithm::sha384: return "SHA-384";
  }
  return {};
}

std::optional<HashAlgorithm> algorithmOfDigestLength(std::size_t hexDigits) {
  switch (hexDigits) {
    case 32: return HashAlgorithm::md5;
    case 40: return HashAlgorithm::sha1;
    case 64: return HashAlgorithm::sha256;
    case 128: return HashAlgorithm::sha512;
    default: return std::nullopt;
  }
}

std::string digestOf(InputHandle file, HashAlgorithm algorithm, const std::stop_token& stop) {
  platform::Digest digest(algorithm);
  const std::span<std::byte> chunk = chunkOfThisThread();
  while (const std::size_t count = file.read(chunk)) {
    if (stop.stop_requested()) throw CancellationError();
    digest.update(chunk.first(count));
  }
  return digest.finishHex();
}

}  // namespace quirn
