// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Base32 (RFC 4648, section 6).

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& base32Tool();

}  // namespace quirn
