// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// PDF documents as the files of a run: what all operations on them open, name and refuse in one way.

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/operation_context.h"
#include "core/operation_error.h"
#include "platform/pdf_document.h"

namespace quirn {

// What a person reads of an error that the service threw while it read `input`.
OperationError readError(const platform::PDFError& error, const InputFile& input);

// Throws readFailed "Not a readable PDF". The document may be locked.
platform::PDFDocument openPDF(const InputFile& input, OperationContext& context);

// Throws unsupportedInput for one that is locked, too.
platform::PDFDocument openUnlockedPDF(const InputFile& input, OperationContext& context);

// Calls `work`, which reads from a document of `input`, with the service's errors as readError() has them.
template <class Work>
auto guardedRead(const InputFile& input, const Work& work) {
  try {
    return work();
  } catch (const platform::PDFError& error) {
    throw readError(error, input);
  }
}

// Calls `work`, which writes parts of `input` into `output`, and throws writeFailed with the detail `failure`, or what
// readError() makes of a failing disk, where that fails.
void guardedWrite(const InputFile& input, const StagedOutput& output, std::string_view failure,
                  const std::function<void()>& work);

// Stages "{stem} ({suffix}).pdf", lets `write` fill it through its descriptor, guarded as above, and publishes it.
OutputFile writtenPDF(const InputFile& input, std::string_view suffix, OperationContext& context,
                      std::string_view failure, const std::function<void(int descriptor)>& write);

// Writes the document as "{stem} ({suffix}).pdf". Throws writeFailed "PDF write failed", or what readError() makes of a
// failing disk.
OutputFile writePDF(const platform::PDFDocument& document, const InputFile& input, std::string_view suffix,
                    OperationContext& context);

}  // namespace quirn
