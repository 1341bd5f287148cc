// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Short random identifiers that need no escaping in a URL.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& nanoIDTool();

}  // namespace quirn
