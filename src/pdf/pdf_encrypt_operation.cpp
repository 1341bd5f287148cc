// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_encrypt_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_files.h"

namespace quirn {

OutputFile PDFEncryptOperation::processFileConfigured(const InputFile& input, const PDFPasswordConfig& config,
                                                      OperationContext& context) const {
  if (config.password.empty()) throw OperationError::unsupportedInput("Enter a password first.");
  const platform::PDFDocument document = openPDF(input, context);
  if (document.isLocked()) {
    throw OperationError::unsupportedInput(fmt::format("{} is already password-protected.", input.fileName()));
  }
  OutputFile output = writtenPDF(input, "protected", context, "Couldn't encrypt the PDF",
                                 [&](int descriptor) { document.writeProtected(descriptor, config.password); });
  context.setStatus(fmt::format("Protected {}", input.fileName()));
  return output;
}

}  // namespace quirn
