// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Universally unique identifiers, versions 4 and 7 (RFC 9562).

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& uuidTool();

}  // namespace quirn
