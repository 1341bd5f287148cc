// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_unlock_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_files.h"
#include "platform/pdf_assembly.h"

namespace quirn {

OutputFile PDFUnlockOperation::processFileConfigured(const InputFile& input, const PDFPasswordConfig& config,
                                                     OperationContext& context) const {
  platform::PDFDocument document = openPDF(input, context);
  guardedRead(input, [&] { document.unlock(config.password); });
  if (document.isLocked()) {
    throw OperationError::unsupportedInput(fmt::format("Wrong password for {}.", input.fileName()));
  }
  if (document.pageCount() == 0) throw OperationError::engineFailed("decrypt", "No pages to write.");
  OutputFile output = writtenPDF(input, "unlocked", context, "PDF write failed", [&](int descriptor) {
    platform::PDFAssembly assembly(descriptor);
    assembly.append(document, 0, document.pageCount(), context.stopToken());
    context.checkCancellation();
    assembly.finish();
  });
  context.setStatus(fmt::format("Unlocked {}", input.fileName()));
  return output;
}

}  // namespace quirn
