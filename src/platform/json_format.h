// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// JSON text laid out anew in one pass, without a tree: checked strictly, the members in their order,
// numbers as they were written. Escapes that need not be become the characters they stand for.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/json.h"

namespace quirn::platform {

// Throws JsonError, with outputTooLarge as soon as there would be more than `limit` bytes: deep
// nesting makes pretty output hundreds of times as long as its input.
std::string formattedJson(std::string_view text, JsonLayout layout, std::size_t limit);

}  // namespace quirn::platform
