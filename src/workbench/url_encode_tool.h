// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Percent-encoding (RFC 3986, section 2.1).

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& urlEncodeTool();

}  // namespace quirn
