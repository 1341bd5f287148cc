// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_metadata_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_files.h"
#include "platform/text.h"

namespace quirn {
namespace {

std::vector<std::string> keywordsOf(std::string_view text) {
  std::vector<std::string> keywords;
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    if (const auto keyword = platform::trimmed(text.substr(0, comma)); !keyword.empty()) keywords.emplace_back(keyword);
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  return keywords;
}

}  // namespace

PDFMetadataConfig PDFMetadataOperation::configurationFor(std::span<const InputFile> inputs, OperationContext& context) {
  const platform::PDFDocument document = openPDF(inputs.front(), context);
  PDFMetadataConfig config;
  guardedRead(inputs.front(), [&] {
    const platform::PDFAttributes attributes = document.attributes();
    config.title = attributes.title;
    config.author = attributes.author;
    config.subject = attributes.subject;
    config.keywords = fmt::format("{}", fmt::join(attributes.keywords, ", "));
  });
  return config;
}

OperationResult PDFMetadataOperation::runWith(std::span<const InputFile> inputs, const PDFMetadataConfig& config,
                                              OperationContext& context) const {
  if (inputs.empty()) throw OperationError::unsupportedInput("Metadata needs a single PDF.");
  const InputFile& input = inputs.front();
  platform::PDFDocument document = openUnlockedPDF(input, context);
  const platform::PDFAttributes attributes{.title = config.title,
                                           .author = config.author,
                                           .subject = config.subject,
                                           .keywords = keywordsOf(config.keywords)};
  guardedRead(input, [&] { document.setAttributes(attributes); });
  OperationResult result;
  result.outputs.push_back(writePDF(document, input, "metadata", context));
  result.summary = fmt::format("Updated metadata for {}.", input.fileName());
  return result;
}

}  // namespace quirn
