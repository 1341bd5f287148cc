// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_merge_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_files.h"
#include "platform/pdf_assembly.h"

namespace quirn {

OperationResult PDFMergeOperation::run(std::span<const InputFile> inputs, OperationContext& context) const {
  OperationResult result;
  std::size_t pages = 0;
  context.progress().setTotalUnitCount(std::ssize(inputs));
  const auto output = context.stage(inputs.front(), "merged", "pdf");
  platform::PDFAssembly assembly(output->descriptor());
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const InputFile& input = inputs[i];
    context.checkCancellation();
    context.setStatus(fmt::format("Merging {}…", input.fileName()));
    const platform::PDFDocument document = openPDF(input, context);
    if (document.isLocked())
      result.failures.push_back(
          {platform::Uuid::random(), input.fileName(), "It is password-protected, so its pages are missing."});
    guardedWrite(input, *output, "PDF write failed",
                 [&] { pages += assembly.append(document, 0, document.pageCount(), context.stopToken()); });
    context.checkCancellation();
    context.progress().complete(1);
  }
  if (pages == 0) throw OperationError::engineFailed("merge", "No pages to merge.");
  guardedWrite(inputs.front(), *output, "PDF write failed", [&] { assembly.finish(); });
  result.outputs.push_back(output->publish(OutputRole::primary));
  result.summary = fmt::format("Merged {} PDFs ({} pages) into {}.", inputs.size(), pages,
                               result.outputs.front().url.filename().string());
  return result;
}

}  // namespace quirn
