// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_split_operation.h"

#include <fmt/format.h>

#include "pdf/page_groups.h"
#include "pdf/pdf_files.h"
#include "platform/pdf_assembly.h"

namespace quirn {
namespace {

std::vector<PageGroup> groupsOf(const PDFSplitConfig& config, std::size_t pageCount) {
  return config.mode == PDFSplitConfig::Mode::everyN ? groupsOfEvery(config.pagesPerChunk, pageCount)
                                                     : groupsOfRanges(config.rangeText, pageCount);
}

std::string suffixOf(const PageGroup& group) {
  const std::size_t first = group.first + 1;
  return group.count == 1 ? fmt::format("split, page {}", first)
                          : fmt::format("split, pages {}-{}", first, group.first + group.count);
}

OutputFile writeGroup(const platform::PDFDocument& document, const InputFile& input, const PageGroup& group,
                      OperationContext& context) {
  return writtenPDF(input, suffixOf(group), context, "PDF write failed", [&](int descriptor) {
    platform::PDFAssembly assembly(descriptor);
    assembly.append(document, group.first, group.count, context.stopToken());
    context.checkCancellation();
    assembly.finish();
  });
}

}  // namespace

PDFSplitConfig PDFSplitOperation::configurationFor(std::span<const InputFile> inputs, OperationContext& context) {
  PDFSplitConfig config;
  config.pageCount = static_cast<int>(openPDF(inputs.front(), context).pageCount());
  return config;
}

OperationResult PDFSplitOperation::runWith(std::span<const InputFile> inputs, const PDFSplitConfig& config,
                                           OperationContext& context) const {
  if (inputs.empty()) throw OperationError::unsupportedInput("Split needs a single PDF.");
  const InputFile& input = inputs.front();
  const platform::PDFDocument document = openUnlockedPDF(input, context);
  const std::vector<PageGroup> groups = groupsOf(config, document.pageCount());
  if (groups.empty()) throw OperationError::unsupportedInput("No pages matched — check your ranges.");
  context.progress().setTotalUnitCount(std::ssize(groups));
  OperationResult result;
  for (const PageGroup& group : groups) {
    context.checkCancellation();
    result.outputs.push_back(writeGroup(document, input, group, context));
    context.progress().complete(1);
    context.setStatus(fmt::format("Wrote {}", result.outputs.back().url.filename().string()));
  }
  const std::size_t count = result.outputs.size();
  result.summary = fmt::format("Split into {} {}.", count, count == 1 ? "file" : "files");
  return result;
}

}  // namespace quirn
