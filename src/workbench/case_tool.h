// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Identifiers and titles from one convention to another.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& caseTool();

}  // namespace quirn
