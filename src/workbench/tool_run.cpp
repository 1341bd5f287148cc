// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/tool_run.h"

#include <exception>

namespace quirn {

ToolRun runTool(const TextTool& tool, std::string_view input, const TextToolOptions& options) {
  try {
    return {tool.transform(input, options), std::nullopt};
  } catch (const TextToolError& error) {
    return {"", error.message()};
  } catch (const std::exception&) {
    return {"", "Couldn’t process the input."};
  }
}

}  // namespace quirn
