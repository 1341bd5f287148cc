// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Identifiers that sort by the time of their making, in Crockford's Base32.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& ulidTool();

}  // namespace quirn
