// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// SQL string literals.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& sqlEscapeTool();

}  // namespace quirn
