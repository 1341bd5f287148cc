// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Compression (RFC 1951) at a gigabyte a second: a first try at data that is likely compressed already.

#pragma once

#include <span>

#include "platform/bytes.h"

namespace quirn::platform {

// Whether even a hasty search finds something to shorten in it. Takes at most 2 GiB.
bool shrinksQuickly(std::span<const std::byte> bytes);

}  // namespace quirn::platform
