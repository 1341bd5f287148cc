// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The escapes that C and its relatives have for control characters.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& backslashTool();

}  // namespace quirn
