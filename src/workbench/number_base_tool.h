// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Whole numbers in base 10, 16, 8 and 2.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& numberBaseTool();

}  // namespace quirn
