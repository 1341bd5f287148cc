// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/tar_extract_operation.h"

#include <algorithm>
#include <string>

#include "archive/extraction.h"
#include "archive/gzip.h"
#include "archive/gzip_reader.h"
#include "archive/tar.h"
#include "platform/bytes.h"

namespace quirn {
namespace {

bool isTar(const InputFile& input) {
  const std::string name = lowerCased(input.fileName());
  return name.ends_with(".tar") || name.ends_with(".tar.gz") || name.ends_with(".tgz");
}

bool isGzipped(const InputFile& input) {
  const std::string name = lowerCased(input.fileName());
  return name.ends_with(".gz") || name.ends_with(".tgz");
}

// "x" of "x.tar.gz".
std::string stemOf(const InputFile& input) {
  constexpr std::string_view extension = ".tar";
  const std::string stem = input.stem();
  const bool hasMore = lowerCased(stem).ends_with(extension) && stem.size() > extension.size();
  return hasMore ? stem.substr(0, stem.size() - extension.size()) : stem;
}

// Empty where the archive breaks off inside of it.
std::span<const std::byte> dataOf(const TarEntry& entry, std::span<const std::byte> bytes) {
  const auto begin = static_cast<std::size_t>(entry.dataOffset);
  return entry.size > bytes.size() - begin ? bytes.first(0)
                                           : bytes.subspan(begin, static_cast<std::size_t>(entry.size));
}

void writeFile(const TarEntry& entry, std::span<const std::byte> data, Extraction& extraction) {
  constexpr std::size_t largestWhole = 8 << 20;
  if (data.size() <= largestWhole) {
    extraction.writeFile(entry.name, data, std::nullopt);
    return;
  }
  extraction.writeFile(entry.name, std::nullopt, [=](const Extraction::Write& write) {
    for (auto left = data; !left.empty(); left = left.subspan(std::min(left.size(), largestWhole)))
      write(left.first(std::min(left.size(), largestWhole)));
  });
}

void extract(const TarEntry& entry, std::span<const std::byte> bytes, Extraction& extraction) {
  if (isLitter(entry.name)) return;
  if (entry.isDirectory) {
    extraction.makeFolder(entry.name);
    return;
  }
  requireSafe(entry.name);
  if (entry.typeflag == tarHardLink) return;
  if (entry.typeflag == tarSymbolicLink) {
    extraction.makeLink(entry.name, entry.linkName);
    return;
  }
  writeFile(entry, dataOf(entry, bytes), extraction);
}

OutputFile extractAll(const InputFile& input, std::span<const std::byte> bytes, OperationContext& context) {
  const std::vector<TarEntry> entries = listTarEntries(bytes);
  if (entries.empty()) throw OperationError::unsupportedInput("Not a readable TAR archive.");
  Extraction extraction(input, stemOf(input), context);
  return extraction.run([&] {
    for (const TarEntry& entry : entries) extract(entry, bytes, extraction);
  });
}

}  // namespace

const OperationInfo& TarExtractOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.tar-extract",
      .displayName = "Extract TAR",
      .iconName = "arrow.up.bin",
      .category = OperationCategory::archive,
      .aliases = {"untar", "extract tar", "tar gz extract", "open tarball"},
      .about = "Extracts each TAR archive, gzipped or not, into a folder of its own.",
  };
  return info;
}

const AcceptedInputs& TarExtractOperation::accepts() {
  static const AcceptedInputs accepts{.singular = "TAR archive", .plural = "TAR archives", .matches = &isTar};
  return accepts;
}

OutputFile TarExtractOperation::processFile(const InputFile& input, OperationContext& context) const {
  context.checkCancellation();
  const InputHandle file = context.open(input);
  const platform::MappedFile mapped = file.map();
  if (!isGzipped(input)) return extractAll(input, mapped.bytes(), context);
  const auto tar = gzipDecompress(mapped.bytes(), gzipOutputLimit);
  if (!tar) throw OperationError::unsupportedInput("Couldn't decompress the gzip stream.");
  return extractAll(input, *tar, context);
}

}  // namespace quirn
