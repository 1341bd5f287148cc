// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a text tool is, for people and for programs, read from its record.

#pragma once

#include <string>

#include "platform/json.h"
#include "workbench/text_tool.h"

namespace quirn::cli {

// Placeholder, sample and controls.
platform::JsonObject toolDetailsAsJson(const TextTool& tool);
std::string toolAsText(const TextTool& tool);

}  // namespace quirn::cli
