// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Message digests: SHA-2 (FIPS 180-4), SHA-1 and MD5 (RFC 1321), and the keyed form of each. SHA-1
// and MD5 are broken as signatures and remain for lists that were made with them.

#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/bytes.h"

namespace quirn::platform {

enum class DigestAlgorithm { sha256, sha1, sha512, md5, sha384 };

class Digest {
 public:
  explicit Digest(DigestAlgorithm algorithm);

  void update(std::span<const std::byte> bytes);

  // The digest of all that was given, as lower-case hex digits. Ends this object's use.
  std::string finishHex();
  // The same as bytes.
  Bytes finish();

 private:
  struct Freeing {
    void operator()(void* state) const;
  };
  std::unique_ptr<void, Freeing> state_;
};

Bytes digestOf(DigestAlgorithm algorithm, std::span<const std::byte> bytes);

// The keyed digest (RFC 2104) of a message that comes in pieces.
class KeyedDigest {
 public:
  KeyedDigest(DigestAlgorithm algorithm, std::span<const std::byte> key);

  void update(std::span<const std::byte> bytes);
  // Ends this object's use.
  Bytes finish();

 private:
  Digest inner_;
  Digest outer_;
};

// The keyed digest (RFC 2104) of `message`, as lower-case hex digits.
std::string hmacHex(DigestAlgorithm algorithm, std::string_view key, std::string_view message);

}  // namespace quirn::platform
