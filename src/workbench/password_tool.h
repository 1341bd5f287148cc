// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Passwords, each character of which is as likely as any other of its pool.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& passwordTool();

// `count` lines of `length` characters, and what they are worth. Throws TextToolError for a pool of
// fewer than two characters.
std::string passwordsFrom(std::string_view pool, std::int64_t length, std::int64_t count);

}  // namespace quirn
