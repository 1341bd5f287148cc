// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The escapes of JavaScript and JSON strings.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& jsEscapeTool();

}  // namespace quirn
