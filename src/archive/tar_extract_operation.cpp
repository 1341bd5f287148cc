// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/tar_extract_operation.h"

#include <string>
#include <utility>

#include "archive/extraction.h"
#include "archive/gzip_reader.h"
#include "archive/tar_walk.h"
#include "platform/readable_file.h"

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

// Empty where the archive breaks off inside of the data.
void writeFile(const TarEntry& entry, TarWalk& walk, Extraction& extraction) {
  constexpr std::size_t largestHeld = 8 << 20;
  if (!walk.isWhole()) return extraction.writeFile(entry.name, {}, std::nullopt);
  if (entry.size <= largestHeld) return extraction.writeFile(entry.name, walk.readAll(), std::nullopt);
  extraction.writeFile(entry.name, std::nullopt, [&](const Extraction::Write& write) {
    for (auto piece = walk.read(largestHeld); !piece.empty(); piece = walk.read(largestHeld)) write(piece);
  });
}

void extract(const TarEntry& entry, TarWalk& walk, Extraction& extraction) {
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
  writeFile(entry, walk, extraction);
}

OutputFile extractAll(const InputFile& input, TarWalk walk, OperationContext& context) {
  auto entry = walk.next();
  if (!entry) throw OperationError::unsupportedInput("Not a readable TAR archive.");
  Extraction extraction(input, stemOf(input), context);
  return extraction.run([&] {
    for (; entry; entry = walk.next()) extract(*entry, walk, extraction);
  });
}

// Expanded twice: a damaged stream is found before anything is made, and memory holds none of it.
std::uint64_t expandedSize(const platform::MappedFile& file, OperationContext& context) {
  std::uint64_t size = 0;
  const bool isSound = gunzip(file, [&](std::span<const std::byte> bytes) {
    context.checkCancellation();
    platform::ReadableFile::countRead();
    size += bytes.size();
  });
  if (!isSound) throw OperationError::unsupportedInput("Couldn't decompress the gzip stream.");
  return size;
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
  if (!isGzipped(input)) {
    const auto archive = mapped.bytes();
    return extractAll(input, TarWalk(sourceOver(archive), archive.size()), context);
  }
  const std::uint64_t size = expandedSize(mapped, context);
  GzipReader reader(mapped);
  const auto read = [&](std::size_t most) { return reader.read(most).value_or(std::span<const std::byte>()); };
  return extractAll(input, TarWalk(read, size), context);
}

}  // namespace quirn
