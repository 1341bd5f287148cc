// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/text_tool_operation.h"

#include <fmt/format.h>

#include <memory>
#include <string>

namespace quirn {
namespace {

// What an operation's description refers to, owned together.
struct Description {
  std::string inputNoun;
  OperationInfo info;
  AcceptedInputs accepts;
};

// "JSON file"
std::string inputNoun(const TextTool& tool) {
  std::string extensions;
  for (const std::string& extension : tool.fileMatch)
    extensions += (extensions.empty() ? "" : " or ") + upperCased(extension);
  return extensions.empty() ? "file" : extensions + " file";
}

std::shared_ptr<const Description> descriptionOf(const TextTool& tool) {
  auto description = std::make_shared<Description>();
  description->inputNoun = inputNoun(tool);
  description->info = {.operationID = tool.id,
                       .displayName = tool.name,
                       .iconName = tool.icon,
                       .category = tool.category,
                       .aliases = tool.aliases,
                       .about = tool.blurb};
  description->accepts = {
      .singular = description->inputNoun,
      .atLeast = 0,
      .atMost = tool.fileMatch.empty() ? 0U : 1U,
      .matches = [&tool](const InputFile& file) { return tool.fileMatch.contains(file.extension()); }};
  return description;
}

}  // namespace

OperationType textToolOperation(const TextTool& tool) {
  const auto description = descriptionOf(tool);
  return OperationType::interactive({description, &description->info}, {description, &description->accepts});
}

}  // namespace quirn
