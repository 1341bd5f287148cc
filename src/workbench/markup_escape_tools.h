// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The escapes of HTML and of XML.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& htmlEscapeTool();
const TextTool& xmlEscapeTool();

}  // namespace quirn
