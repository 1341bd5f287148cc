// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// JSON Web Tokens (RFC 7519, compact form) as people read them. Nothing is verified.

#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace quirn {

// Times are told relative to `now`. Throws TextToolError.
std::string jwtDescription(std::string_view token, std::chrono::sys_seconds now);

}  // namespace quirn
