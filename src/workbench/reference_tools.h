// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tools for the web, dates and times, units and colors.

#pragma once

#include "workbench/text_tool.h"

namespace quirn {

const TextTool& urlParserTool();
const TextTool& ipCalculatorTool();
const TextTool& httpStatusTool();
const TextTool& userAgentTool();

const TextTool& timestampTool();
const TextTool& timeZoneTool();
const TextTool& dateMathTool();
const TextTool& cronTool();

const TextTool& unitTool();

const TextTool& colorConverterTool();
const TextTool& colorContrastTool();
const TextTool& gradientTool();

}  // namespace quirn
