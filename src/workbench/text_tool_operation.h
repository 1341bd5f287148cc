// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A text tool as an operation, so that it appears wherever operations do.

#pragma once

#include "core/operation_type.h"
#include "workbench/text_tool.h"

namespace quirn {

// Interactive; accepts no file, or one whose extension the tool matches. `tool` lives as long as
// the program.
OperationType textToolOperation(const TextTool& tool);

}  // namespace quirn
