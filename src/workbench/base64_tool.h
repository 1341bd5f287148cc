// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Base64 (RFC 4648, sections 4 and 5).

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& base64Tool();

}  // namespace quirn
