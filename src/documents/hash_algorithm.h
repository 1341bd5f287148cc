// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The digests that checksum lists are made with.

#pragma once

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

#include "core/input_handle.h"
#include "platform/digest.h"

namespace quirn {

using HashAlgorithm = platform::DigestAlgorithm;

// "SHA-256", …
std::string_view label(HashAlgorithm algorithm);

// The algorithm whose digest has that many hex digits: 32 MD5, 40 SHA-1, 64 SHA-256, 128 SHA-512.
std::optional<HashAlgorithm> algorithmOfDigestLength(std::size_t hexDigits);

// The digest of all of `file`, in lower-case hex digits, read a chunk at a time. Throws readFailed,
// or CancellationError when `stop` is requested.
std::string digestOf(InputHandle file, HashAlgorithm algorithm, const std::stop_token& stop);

}  // namespace quirn
