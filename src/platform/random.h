// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Random bytes fit for passwords, keys and names that nobody can guess.

#pragma once

#include <cstddef>
#include <span>

namespace quirn::platform {

// Fills `bytes` from the kernel's generator. Blocks only if that was never seeded since the machine
// started. Throws std::system_error where the kernel has none.
void fillRandom(std::span<std::byte> bytes);

}  // namespace quirn::platform
