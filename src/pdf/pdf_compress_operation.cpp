// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_compress_operation.h"

#include <fmt/format.h>

#include "core/byte_count.h"
#include "pdf/pdf_pages.h"
#include "platform/file_status.h"
#include "platform/pdf_compression.h"

namespace quirn {
namespace {

// Adds the size of the output to `after`.
OutputFile compress(const InputFile& input, std::int64_t& after, OperationContext& context) {
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] { platform::compressForScreen(document, context.stopToken()); });
  context.checkCancellation();
  return writtenPDF(input, "compressed", context, "PDF write failed", [&](int descriptor) {
    platform::writeCompressed(document, descriptor);
    after += platform::sizeOfOpen(descriptor);
  });
}

}  // namespace

std::string compressionSummary(std::int64_t before, std::int64_t after) {
  const std::int64_t percent = before > 0 ? (before - after) * 100 / before : 0;
  const std::string was = byteCountText(before);
  const std::string is = byteCountText(after);
  if (percent >= 1) return fmt::format("Compressed {} → {} ({}% smaller).", was, is, percent);
  return fmt::format("Optimised for screen ({} → {} — already compact).", was, is);
}

OperationResult PDFCompressOperation::run(std::span<const InputFile> inputs, OperationContext& context) const {
  context.progress().setTotalUnitCount(static_cast<std::int64_t>(inputs.size()));
  OperationResult result;
  std::int64_t before = 0;
  std::int64_t after = 0;
  for (const InputFile& input : inputs) {
    context.checkCancellation();
    context.setStatus(fmt::format("Compressing {}…", input.fileName()));
    result.outputs.push_back(compress(input, after, context));
    before += input.size;
    context.progress().complete(1);
  }
  if (result.outputs.empty()) throw OperationError::engineFailed("compress", "Nothing compressed.");
  result.summary = compressionSummary(before, after);
  return result;
}

}  // namespace quirn
