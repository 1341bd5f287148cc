// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The UTF-8 bytes of a text as hex digits.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& hexBytesTool();

}  // namespace quirn
