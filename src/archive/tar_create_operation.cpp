// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/tar_create_operation.h"

#include <fmt/format.h>

#include <chrono>

#include "archive/archive_items.h"
#include "archive/gzip_writer.h"
#include "archive/tar.h"
#include "platform/bytes.h"
#include "platform/file_status.h"

namespace quirn {
namespace {

std::chrono::sys_seconds now() {
  return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

// The header has said how large the file is, so that much is read, and no more.
void addItem(TarWriter& writer, const ArchiveItem& item, OperationContext& context) {
  constexpr std::uint16_t mode = 0644;
  context.checkCancellation();
  context.setStatus(fmt::format("Adding {}…", item.name));
  InputHandle file = context.open(item.file);
  const auto attributes = platform::attributesOfOpen(file.descriptor());
  auto left = static_cast<std::uint64_t>(file.size());
  writer.begin(item.name, left, attributes ? attributes->modified : now(), mode);
  platform::Bytes chunk(static_cast<std::size_t>(std::min<std::uint64_t>(left, chunkSize)));
  while (left > 0) {
    context.checkCancellation();
    const std::size_t count = file.read(std::span(chunk).first(std::min<std::size_t>(chunk.size(), left)));
    writer.append(std::span(chunk).first(count));
    left -= count;
  }
  writer.end();
  context.progress().complete(1);
}

std::size_t writeTar(std::span<const InputFile> inputs, ByteSink sink, OperationContext& context) {
  TarWriter writer(std::move(sink));
  const std::vector<ArchiveItem> items = archiveItemsOf(inputs, context);
  for (const ArchiveItem& item : items) addItem(writer, item, context);
  writer.finish();
  return items.size();
}

std::size_t writeTarGz(std::span<const InputFile> inputs, const ByteSink& sink, OperationContext& context) {
  GzipWriter gzip(sink, now());
  const std::size_t count = writeTar(inputs, [&gzip](std::span<const std::byte> bytes) { gzip.write(bytes); }, context);
  gzip.finish();
  return count;
}

}  // namespace

Panel TarCreateConfig::panel() {
  return {toggle<&TarCreateConfig::gzip>("Gzip (.tar.gz)")};
}

const OperationInfo& TarCreateOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.tar-create",
      .displayName = "Create TAR",
      .iconName = "shippingbox",
      .category = OperationCategory::archive,
      .aliases = {"tar", "tar gz", "create tar", "tarball"},
      .about = "Packs files and folders into one TAR archive, with or without gzip.",
  };
  return info;
}

const AcceptedInputs& TarCreateOperation::accepts() {
  static const AcceptedInputs accepts{.folders = AcceptedInputs::Folders::allowed};
  return accepts;
}

OperationResult TarCreateOperation::runWith(std::span<const InputFile> inputs, const TarCreateConfig& config,
                                            OperationContext& context) const {
  const std::string extension = config.gzip ? "tar.gz" : "tar";
  const auto output = context.stage(inputs.front(), {archiveStemOf(inputs), "Archive", extension});
  const std::size_t count =
      config.gzip ? writeTarGz(inputs, sinkInto(*output), context) : writeTar(inputs, sinkInto(*output), context);
  if (count == 0) throw OperationError::unsupportedInput("Nothing to archive.");
  const OutputFile archive = output->publish(OutputRole::primary);
  return {.outputs = {archive}, .summary = createdSummary(archive, count), .failures = {}};
}

}  // namespace quirn
