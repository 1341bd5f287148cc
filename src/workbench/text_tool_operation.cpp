// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/text_tool_operation.h"

#include <fmt/format.h>

#include <memory>
#include <string>

namespace quirn {
namespace {

class TextToolOperation final : public AnyInteractiveOperation {
 public:
  explicit TextToolOperation(const TextTool& tool) : tool_(tool) {}

 private:
  std::string_view displayName() const override { return tool_.name; }

  const TextTool& tool_;
};

// "JSON file"
std::string inputNoun(const TextTool& tool) {
  std::string extensions;
  for (const std::string& extension : tool.fileMatch)
    extensions += (extensions.empty() ? "" : " or ") + upperCased(extension);
  return extensions.empty() ? "file" : extensions + " file";
}

}  // namespace

OperationType textToolOperation(const TextTool& tool) {
  return OperationType::of(
      {.info = {.operationID = tool.id,
                .displayName = tool.name,
                .iconName = tool.icon,
                .category = tool.category,
                .aliases = tool.aliases,
                .about = tool.blurb},
       .accepts = {.singular = inputNoun(tool),
                   .atLeast = 0,
                   .atMost = tool.fileMatch.empty() ? 0U : 1U,
                   .matches = [&tool](const InputFile& file) { return tool.fileMatch.contains(file.extension()); }},
       .make = [&tool] { return std::make_unique<TextToolOperation>(tool); },
       .isInteractive = true});
}

}  // namespace quirn
