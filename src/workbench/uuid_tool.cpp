// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/uuid_tool.h"

#include "core/input_file.h"
#include "platform/uuid.h"
#include "workbench/lines.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

using platform::Uuid;

std::string transform(std::string_view, const TextToolOptions& options) {
  const bool isOrdered = options.text("version", "v4") == "v7";
  const bool isUppercase = options.boolean("uppercase");
  const bool hasBraces = options.boolean("braces");
  return linesOf(options.integer("count", 5), [=] {
    const Uuid uuid = isOrdered ? Uuid::ordered(millisecondsSince1970()) : Uuid::random();
    const std::string text = isUppercase ? upperCased(uuid.text()) : uuid.text();
    return hasBraces ? "{" + text + "}" : text;
  });
}

}  // namespace

const TextTool& uuidTool() {
  static const TextTool tool{
      .id = "dev.uuid",
      .name = "UUID Generator",
      .shortName = "uuid",
      .icon = "number",
      .aliases = {"uuid", "guid", "unique id", "v4", "v7"},
      .blurb = "Generate random or time-ordered unique identifiers.",
      .isGenerator = true,
      .controls = {StepperControl{"count", "Count", 1, 500, 5}, ChoiceControl{"version", "Version", {"v4", "v7"}, "v4"},
                   ToggleControl{"uppercase", "Uppercase", false}, ToggleControl{"braces", "Braces", false}},
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
