// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_creation.h"

#include <fmt/format.h>

#include <memory>

#include "archive/large_zip_entry.h"
#include "archive/zip_entry.h"
#include "core/operation_error.h"

namespace quirn {
namespace {

using platform::Bytes;

// Files up to here are read and compressed as a whole, one for each processor at a time.
constexpr std::int64_t largestWhole = 8 << 20;
// What may be in work at once.
constexpr std::int64_t mostPendingBytes = 32 << 20;
constexpr std::size_t mostPending = 128;

std::optional<std::string> contentOf(InputHandle& file) {
  constexpr std::int64_t most = 1 << 30;  // a file may grow while it is read
  try {
    return file.readAll(most);
  } catch (const OperationError&) {
    return std::nullopt;
  }
}

}  // namespace

ZipCreation::ZipCreation(OperationContext& context, StagedOutput& output, std::string password)
    : context_(context), writer_(sinkInto(output)), isEncrypted_(!password.empty()), keys_(std::move(password)) {}

void ZipCreation::add(const ArchiveItem& item) {
  context_.checkCancellation();
  context_.setStatus(fmt::format("Zipping {}…", item.name));
  std::optional<InputHandle> file;
  try {
    file = context_.open(item.file);
  } catch (const OperationError&) {
    context_.progress().complete(1);
    return;
  }
  if (file->size() > largestWhole) {
    addLarge(item, std::move(*file));
    return;
  }
  addSmall(item, std::move(*file));
}

std::optional<ZipKey> ZipCreation::nextKey() {
  return isEncrypted_ ? std::optional(keys_.newKey()) : std::nullopt;
}

std::optional<ZipCreation::Prepared> ZipCreation::prepared(const std::string& name, InputHandle& file,
                                                           const std::optional<ZipKey>& key) {
  const auto content = contentOf(file);
  if (!content) return std::nullopt;
  const auto data = platform::bytesOf(*content);
  ZipPacked packed = zipPacked(data);
  Prepared entry{zipHeaderOf(name, file), std::move(packed.deflated)};
  entry.header.uncompressedSize = data.size();
  entry.header.crc = packed.crc;
  entry.header.method = packed.method;
  if (packed.method == zipStored) entry.payload.assign(data.begin(), data.end());
  if (key) {
    entry.payload = encrypted(entry.payload, key->salt(), key->keys());
    entry.header.aesRealMethod = packed.method;
  }
  entry.header.payloadSize = entry.payload.size();
  return entry;
}

void ZipCreation::addSmall(const ArchiveItem& item, InputHandle file) {
  const std::int64_t size = file.size();
  while (pending_.size() >= mostPending || (!pending_.isEmpty() && pendingBytes_ + size > mostPendingBytes))
    writeOldest();
  pendingBytes_ += size;
  pending_.begin([name = item.name, size, key = nextKey(), file = std::make_shared<InputHandle>(std::move(file))] {
    return Pending{prepared(name, *file, key), size};
  });
}

void ZipCreation::addLarge(const ArchiveItem& item, InputHandle file) {
  writeAllPending();
  LargeZipEntry entry(context_, item);
  if (entry.measure(std::move(file))) {
    entry.writeTo(writer_, nextKey());
    ++count_;
  }
  context_.progress().complete(1);
}

void ZipCreation::writeOldest() {
  context_.checkCancellation();
  const Pending oldest = pending_.next();
  pendingBytes_ -= oldest.size;
  if (oldest.entry) {
    writer_.begin(oldest.entry->header);
    writer_.append(oldest.entry->payload);
    ++count_;
  }
  context_.progress().complete(1);
}

void ZipCreation::writeAllPending() {
  while (!pending_.isEmpty()) writeOldest();
}

std::size_t ZipCreation::finish() {
  writeAllPending();
  writer_.finish();
  return count_;
}

}  // namespace quirn
