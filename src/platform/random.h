// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Random bytes fit for passwords, keys and names that nobody can guess.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quirn::platform {

// Fills `bytes` from the kernel's generator. Blocks only if that was never seeded since the machine
// started. Throws std::system_error where the kernel has none.
void fillRandom(std::span<std::byte> bytes);

// 64 random bits from there.
std::uint64_t randomBits();

// A number from 0 to below `bound`, which is not 0, each as likely as any other, made of what
// `bits` gives (Lemire, "Fast Random Integer Generation in an Interval", 2019).
std::uint64_t drawBelow(std::uint64_t bound, const std::function<std::uint64_t()>& bits);

// The same, from the kernel's generator.
std::size_t randomBelow(std::size_t bound);

// `length` characters of `alphabet`, which is not empty, each drawn by itself; none for a negative
// length.
std::string randomText(std::int64_t length, std::string_view alphabet);

}  // namespace quirn::platform
