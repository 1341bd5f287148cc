// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Titles as the last part of a URL.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& slugTool();

}  // namespace quirn
