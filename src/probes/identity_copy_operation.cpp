// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "probes/identity_copy_operation.h"

#include <fmt/format.h>

#include <vector>

namespace quirn {

const OperationInfo& IdentityCopyOperation::info() {
  static const OperationInfo info{
      .operationID = "stub.identity",
      .displayName = "Identity Copy",
      .iconName = "doc.on.doc",
      .category = OperationCategory::utility,
      .aliases = {"duplicate", "clone"},
      .about = "Copies each file unchanged.",
  };
  return info;
}

const AcceptedInputs& IdentityCopyOperation::accepts() {
  static const AcceptedInputs accepts;
  return accepts;
}

OutputFile IdentityCopyOperation::processFile(const InputFile& input, OperationContext& context) const {
  context.setStatus(fmt::format("Copying {}…", input.fileName()));
  InputHandle file = context.open(input);
  const std::string dotted = input.url.extension().string();
  const auto output = context.stage(input, "copy", dotted.empty() ? dotted : dotted.substr(1));
  std::vector<std::byte> chunk(chunkSize);
  while (const std::size_t count = file.read(chunk)) {
    context.checkCancellation();
    output->write(std::span(chunk).first(count));
  }
  return output->publish(OutputRole::primary);
}

}  // namespace quirn
