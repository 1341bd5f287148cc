// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_files.h"

#include <fmt/format.h>

#include <utility>

#include "core/budgets.h"

namespace quirn {

using platform::PDFDocument;
using platform::PDFError;

OperationError readError(const PDFError& error, const InputFile& input) {
  switch (error.kind()) {
    case PDFError::Kind::tooDeep: return breachOf(Budget::nesting, input.fileName());
    case PDFError::Kind::tooLarge: return breachOf(Budget::bytesOutPerByteIn, input.fileName());
    case PDFError::Kind::readFailed:
      return OperationError::readFailed(input.url,
                                        fmt::format("Read failed partway through the file. {}", error.what()));
    case PDFError::Kind::unreadable:
    case PDFError::Kind::writeFailed: break;
  }
  return OperationError::readFailed(input.url, "Not a readable PDF");
}

PDFDocument openPDF(const InputFile& input, OperationContext& context) {
  PDFDocument document = guardedRead(input, [&] { return PDFDocument(context.open(input).takeFile()); });
  if (std::cmp_greater(document.pageCount(), limitOf(Budget::pages))) throw breachOf(Budget::pages, input.fileName());
  return document;
}

PDFDocument openUnlockedPDF(const InputFile& input, OperationContext& context) {
  PDFDocument document = openPDF(input, context);
  if (document.isLocked()) {
    throw OperationError::unsupportedInput(
        fmt::format("{} is password-protected. Remove its password first.", input.fileName()));
  }
  return document;
}

void guardedWrite(const InputFile& input, const StagedOutput& output, std::string_view failure,
                  const std::function<void()>& work) {
  try {
    work();
  } catch (const PDFError& error) {
    if (error.kind() == PDFError::Kind::readFailed) throw readError(error, input);
    throw OperationError::writeFailed(output.url(), std::string(failure));
  }
}

OutputFile writtenPDF(const InputFile& input, std::string_view suffix, OperationContext& context,
                      std::string_view failure, const std::function<void(int descriptor)>& write) {
  const auto output = context.stage(input, suffix, "pdf");
  guardedWrite(input, *output, failure, [&] { write(output->descriptor()); });
  return output->publish(OutputRole::primary);
}

OutputFile writePDF(const PDFDocument& document, const InputFile& input, std::string_view suffix,
                    OperationContext& context) {
  return writtenPDF(input, suffix, context, "PDF write failed", [&](int descriptor) { document.write(descriptor); });
}

}  // namespace quirn
