// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_extract_operation.h"

#include <fmt/format.h>

#include <algorithm>

#include "archive/extraction.h"
#include "archive/zip_extraction.h"
#include "archive/zip_overlap.h"
#include "archive/zip_reader.h"

namespace quirn {
namespace {

void refuseHostile(const InputFile& archive, const std::vector<ZipFileEntry>& entries,
                   std::span<const std::byte> bytes) {
  if (std::cmp_greater(entries.size(), limitOf(Budget::entries))) throw breachOf(Budget::entries, archive.fileName());
  if (haveOverlaps(entries, bytes)) {
    throw OperationError::unsupportedInput(
        fmt::format("{} has entries that overlap one another, as only a harmful archive has.", archive.fileName()));
  }
}

}  // namespace

Panel ZipExtractConfig::panel() {
  return {secret<&ZipExtractConfig::password>("Password (only if encrypted)")};
}

const OperationInfo& ZipExtractOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.zip-extract",
      .displayName = "Extract ZIP",
      .iconName = "arrow.up.bin",
      .category = OperationCategory::archive,
      .aliases = {"unzip", "extract zip", "decompress zip", "open zip", "decrypt zip"},
      .about = "Extracts each ZIP archive into a folder of its own.",
  };
  return info;
}

const AcceptedInputs& ZipExtractOperation::accepts() {
  static const AcceptedInputs accepts{.singular = "ZIP archive",
                                      .plural = "ZIP archives",
                                      .matches = [](const InputFile& input) { return hasExtension(input, {"zip"}); }};
  return accepts;
}

OutputFile ZipExtractOperation::processFileConfigured(const InputFile& input, const ZipExtractConfig& config,
                                                      OperationContext& context) const {
  context.checkCancellation();
  const InputHandle file = context.open(input);
  const platform::MappedFile mapped = file.map();
  const std::vector<ZipFileEntry> entries = listZipEntries(mapped.bytes());
  if (config.password.empty() && std::ranges::any_of(entries, &ZipFileEntry::isEncrypted)) {
    throw OperationError::unsupportedInput(
        fmt::format("{} is password-protected — enter its password.", input.fileName()));
  }
  refuseHostile(input, entries, mapped.bytes());
  Extraction extraction(input, input.stem(), context);
  try {
    return extraction.run([&] { ZipExtraction(mapped.bytes(), entries, config.password, extraction).run(); });
  } catch (const ZipError& error) {
    if (error.kind() != ZipError::Kind::wrongPassword) throw;
    throw OperationError::unsupportedInput(fmt::format("Wrong password for {}.", input.fileName()));
  }
}

}  // namespace quirn
