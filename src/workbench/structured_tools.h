// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tools for JSON, XML and other structured text.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& jsonTool();
const TextTool& jsonPathTool();
const TextTool& jwtTool();
const TextTool& queryStringTool();
const TextTool& regexTool();
const TextTool& xmlTool();
const TextTool& xmlJsonTool();
const TextTool& xpathTool();

}  // namespace quirn
