// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Lines as fields of a CSV file (RFC 4180).

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& csvEscapeTool();

}  // namespace quirn
