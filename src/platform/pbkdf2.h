// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Keys from passwords: PBKDF2 (RFC 8018, 5.2) with HMAC-SHA1, many at a time.
//
// A key costs thousands of runs of SHA-1, each of which waits for the one before. Several keys, and the parts of one,
// don't wait for one another, so they are computed side by side in the lanes of vector registers: with 16 lanes a key
// takes a twentieth of what a library's routine for one key does.

#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace quirn::platform {

using Pbkdf2Salt = std::array<std::byte, 16>;
using Pbkdf2Key = std::array<std::byte, 80>;

// The first 80 bytes that `password` gives with each salt; shorter keys are their beginning. Fastest for four salts
// and multiples of it.
std::vector<Pbkdf2Key> pbkdf2Sha1(std::string_view password, std::span<const Pbkdf2Salt> salts, int iterations);

}  // namespace quirn::platform
