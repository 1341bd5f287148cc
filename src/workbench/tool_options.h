// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The options of a tool, set one by one from text that people and scripts write.

#pragma once

#include <string>
#include <string_view>

#include "core/panel.h"
#include "workbench/text_tool.h"

namespace quirn {

// A choice is set by the text of its option or a beginning of that which fits no other, in either
// case: "enc" for "Encode (→ xn--)". Throws SettingError, whose sentence names what is accepted,
// for an unknown key or a value that is not accepted.
void setOption(const TextTool& tool, TextToolOptions& options, std::string_view key, std::string_view value);

// "Encode, Decode", "a whole number from 1 to 50", …
std::string acceptedValues(const TextToolControl& control);

// The options with every number brought into the range of its stepper, and numbers that can't be
// read at their default. Keys that the tool doesn't know stay; it ignores them.
TextToolOptions clamped(const TextTool& tool, TextToolOptions options);

}  // namespace quirn
