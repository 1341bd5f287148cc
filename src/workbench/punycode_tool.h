// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Internationalised domain names in their ASCII form.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& punycodeTool();

}  // namespace quirn
