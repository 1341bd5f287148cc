// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/large_zip_entry.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "archive/deflate_pipeline.h"
#include "archive/zip_entry.h"
#include "core/operation_error.h"
#include "platform/compression.h"
#include "platform/file_status.h"
#include "platform/text.h"

namespace quirn {
namespace {

constexpr std::uint64_t mostBytesKept = 512 << 20;

}  // namespace

ZipHeader zipHeaderOf(const std::string& name, const InputHandle& file) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto attributes =
      platform::attributesOfOpen(file.descriptor()).value_or(platform::FileAttributes{.modified = now});
  // The format says that names are UTF-8, and readers refuse an archive over one that isn't.
  return {.name = platform::repairedUtf8(name), .modified = attributes.modified, .mode = attributes.permissions};
}

template <class Take>
void LargeZipEntry::readThrough(InputHandle& file, std::uint64_t mostBytes, Take take) const {
  platform::Bytes chunk(chunkSize);
  while (const std::size_t count = file.read(std::span(chunk).first(std::min<std::uint64_t>(chunkSize, mostBytes)))) {
    context_.checkCancellation();
    mostBytes -= count;
    take(std::span<const std::byte>(chunk).first(count));
  }
}

bool LargeZipEntry::measure(InputHandle file) {
  std::uint64_t deflatedSize = 0;
  DeflatePipeline pipeline([&](std::span<const std::byte> piece) {
    deflatedSize += piece.size();
    if (deflatedSize > mostBytesKept) {
      arePiecesKept_ = false;
      pieces_.clear();
    }
    if (arePiecesKept_) pieces_.emplace_back(piece.begin(), piece.end());
  });
  try {
    readThrough(file, std::numeric_limits<std::uint64_t>::max(),
                [&](std::span<const std::byte> bytes) { pipeline.write(bytes); });
  } catch (const OperationError&) {
    return false;
  }
  pipeline.finish();
  header_ = zipHeaderOf(item_.name, file);
  header_.crc = pipeline.crc();
  header_.uncompressedSize = pipeline.size();
  header_.method = deflatedSize < pipeline.size() ? zipDeflated : zipStored;
  header_.payloadSize = header_.method == zipDeflated ? deflatedSize : pipeline.size();
  return true;
}

void LargeZipEntry::writeTo(ZipWriter& writer, const std::optional<ZipKey>& key) {
  if (!key) {
    writer.begin(header_);
    writePayload([&](std::span<const std::byte> bytes) { writer.append(bytes); });
    return;
  }
  header_.payloadSize += zipAesOverhead;
  header_.aesRealMethod = header_.method;
  writer.begin(header_);
  ZipEncryption encryption(key->salt(), key->keys());
  writer.append(encryption.beginning());
  writePayload([&](std::span<const std::byte> bytes) {
    platform::Bytes enciphered(bytes.begin(), bytes.end());
    encryption.encipher(enciphered);
    writer.append(enciphered);
  });
  writer.append(encryption.ending());
}

void LargeZipEntry::writePayload(const ByteSink& sink) {
  if (header_.method == zipStored) {
    readAgain(sink);
    return;
  }
  if (!arePiecesKept_) {
    compressAgain(sink);
    return;
  }
  for (const platform::Bytes& piece : pieces_) {
    context_.checkCancellation();
    sink(piece);
  }
}

void LargeZipEntry::readAgain(const ByteSink& sink) {
  InputHandle file = context_.open(item_.file);
  std::uint32_t crc = platform::crc32Start;
  std::uint64_t size = 0;
  // What was added to the file meanwhile is left out: the header has said how much there is.
  readThrough(file, header_.uncompressedSize, [&](std::span<const std::byte> bytes) {
    platform::crc32Update(crc, bytes);
    size += bytes.size();
    sink(bytes);
  });
  if (~crc != header_.crc || size != header_.uncompressedSize)
    throw OperationError::readFailed(item_.file.url, "The file was changed while it was read.");
}

void LargeZipEntry::compressAgain(const ByteSink& sink) {
  DeflatePipeline pipeline(sink);
  readAgain([&](std::span<const std::byte> bytes) { pipeline.write(bytes); });
  pipeline.finish();
}

}  // namespace quirn
