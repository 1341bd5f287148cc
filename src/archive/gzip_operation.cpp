// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/gzip_operation.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

#include "archive/gzip_reader.h"
#include "archive/gzip_writer.h"
#include "platform/bytes.h"
#include "platform/file_status.h"

namespace quirn {
namespace {

// Names of outputs have no control characters; those of inputs may.
std::string printable(std::string text) {
  std::erase_if(text, [](char character) { return static_cast<unsigned char>(character) < 0x20 || character == 0x7F; });
  return text;
}

std::string withoutDot(const std::string& extension) {
  return extension.empty() ? extension : extension.substr(1);
}

OutputNaming compressedNaming(const InputFile& input) {
  const std::string extension = printable(withoutDot(input.url.extension().string()));
  constexpr std::size_t longestExtension = 250;
  if (extension.size() > longestExtension) return {input.fileName(), "gz", "gz"};
  return {input.stem(), "gz", extension.empty() ? "gz" : extension + ".gz"};
}

OutputNaming expandedNaming(const InputFile& input) {
  const std::filesystem::path inner = input.stem();
  const std::string extension = printable(withoutDot(inner.extension().string()));
  return {inner.stem().string(), "", extension.empty() ? "bin" : extension};
}

OutputFile compress(const InputFile& input, OperationContext& context) {
  InputHandle file = context.open(input);
  const auto attributes = platform::attributesOfOpen(file.descriptor());
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto output = context.stage(input, compressedNaming(input));
  GzipWriter gzip(sinkInto(*output), attributes ? attributes->modified : now);
  platform::Bytes chunk(chunkSize);
  while (const std::size_t count = file.read(chunk)) {
    context.checkCancellation();
    gzip.write(std::span(chunk).first(count));
  }
  gzip.finish();
  return output->publish(OutputRole::primary);
}

OutputFile expand(const InputFile& input, OperationContext& context) {
  const InputHandle file = context.open(input);
  const platform::MappedFile mapped = file.map();
  const auto output = context.stage(input, expandedNaming(input));
  const bool isWhole = gunzip(mapped, [&](std::span<const std::byte> bytes) {
    context.checkCancellation();
    output->write(bytes);
  });
  if (!isWhole) throw OperationError::unsupportedInput(fmt::format("Couldn't decompress {}.", input.fileName()));
  return output->publish(OutputRole::primary);
}

bool isCompressed(const InputFile& input) {
  return input.extension() == "gz";
}

OutputFile processed(const InputFile& input, OperationContext& context) {
  return isCompressed(input) ? expand(input, context) : compress(input, context);
}

std::string sentenceFor(const InputFile& input) {
  return fmt::format("{} {}", isCompressed(input) ? "Decompressed" : "Compressed", input.fileName());
}

}  // namespace

const OperationInfo& GzipOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.gzip",
      .displayName = "Gzip / Un-gzip",
      .iconName = "archivebox",
      .category = OperationCategory::archive,
      .aliases = {"gzip", "gunzip", "gz", "compress file"},
      .about = "Compresses each file with gzip, and expands files that end in .gz.",
  };
  return info;
}

const AcceptedInputs& GzipOperation::accepts() {
  static const AcceptedInputs accepts;
  return accepts;
}

OperationResult GzipOperation::run(std::span<const InputFile> inputs, OperationContext& context) const {
  context.checkCancellation();
  OperationResult result = runBatch(inputs, context, [&](const InputFile& input) {
    OutputFile output = processed(input, context);
    context.setStatus(sentenceFor(input));
    return output;
  });
  if (inputs.size() == 1) result.summary = sentenceFor(inputs.front());
  return result;
}

}  // namespace quirn
