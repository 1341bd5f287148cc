// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Code points spelt in ASCII.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& unicodeEscapeTool();

}  // namespace quirn
