// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// All text tools.

#pragma once

#include <span>
#include <string_view>

#include "workbench/text_tool.h"

namespace quirn {

// In the order of the catalog.
std::span<const TextTool* const> allTextTools();

// Null if there is none.
const TextTool* textToolByID(std::string_view id);

}  // namespace quirn
