// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Filler text.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& loremTool();

}  // namespace quirn
