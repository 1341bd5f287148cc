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

struct Compressed {
  OutputFile output;
  std::int64_t bytes = 0;
};

Compressed compress(const InputFile& input, OperationContext& context) {
  platform::PDFDocument document = openUnlockedPDF(input, context);
  changePDF(input, [&] { platform::compressForScreen(document, context.stopToken()); });
  context.checkCancellation();
  const auto output = context.stage(input, "compressed", "pdf");
  writeOutput(input, *output, [&] { platform::writeCompressed(document, output->descriptor()); });
  const std::int64_t bytes = platform::statusOf(output->descriptor()).size;
  return {output->publish(OutputRole::primary), bytes};
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
    Compressed compressed = compress(input, context);
    result.outputs.push_back(std::move(compressed.output));
    before += input.size;
    after += compressed.bytes;
    context.progress().complete(1);
  }
  if (result.outputs.empty()) throw OperationError::engineFailed("compress", "Nothing compressed.");
  result.summary = compressionSummary(before, after);
  return result;
}

}  // namespace quirn
