// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Whether this build watches itself. What a sanitizer can't live under is left out of a worker's lock-down by these
// constants alone: its shadow of the memory breaks every limit on memory, and that for races has a thread of its own
// from the beginning on.

#pragma once

namespace quirn::platform {

#if defined(__SANITIZE_THREAD__)
inline constexpr bool hasSanitizerThread = true;
#else
inline constexpr bool hasSanitizerThread = false;
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif

}  // namespace quirn::platform
