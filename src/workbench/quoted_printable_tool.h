// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Quoted-Printable (RFC 2045, section 6.7).

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& quotedPrintableTool();

}  // namespace quirn
