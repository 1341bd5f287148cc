// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Help for misspelt names.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quirn {

// The name that `written` was probably meant to be, if one is close: few letters changed, swapped,
// missing or too many.
std::optional<std::string> nearestName(std::string_view written, std::span<const std::string> names);

// " Did you mean “sha256”?", or nothing.
std::string didYouMean(std::string_view written, std::span<const std::string> names);

}  // namespace quirn
