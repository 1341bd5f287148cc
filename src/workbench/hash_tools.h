// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Digests of a text, plain and keyed.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& hashTool();
const TextTool& hmacTool();

}  // namespace quirn
