// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_extraction.h"

#include <algorithm>
#include <utility>

#include "archive/byte_reader.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace quirn {
namespace {

constexpr std::uint64_t largestHeld = 32 << 20;
constexpr std::uint64_t mostPendingBytes = 32 << 20;
constexpr std::size_t mostPending = 128;

std::uint64_t heldBytesOf(const ZipFileEntry& entry) {
  return std::min(entry.uncompressedSize, largestHeld);
}

// One that can't be found is a fault of the entry, which shows when it is read.
ZipSalt saltOf(const ZipFileEntry& entry, std::span<const std::byte> archive) {
  try {
    return zipSaltOf(zipPayloadOf(entry, archive)).value_or(ZipSalt());
  } catch (const ZipError&) {
    return {};
  } catch (const ByteReader::OutOfBounds&) {
    return {};
  }
}

bool isLink(const ZipFileEntry& entry) {
  return (entry.unixMode & 0xF000) == 0xA000;
}

bool isRead(const ZipFileEntry& entry) {
  return !entry.isDirectory && !isLitter(entry.name);
}

std::optional<ZipAesKeys> derived(const std::optional<ZipKey>& key) {
  return key ? std::optional(key->keys()) : std::nullopt;
}

}  // namespace

void ZipExtraction::run() {
  for (lookAhead(); !pending_.empty(); lookAhead()) makeOldest();
}

void ZipExtraction::lookAhead() {
  for (; next_ < entries_.size() && pending_.size() < mostPending && pendingBytes_ < mostPendingBytes; ++next_) {
    const ZipFileEntry& entry = entries_[next_];
    if (isLitter(entry.name)) continue;
    const Pending pending{&entry, keyOf(next_)};
    pending_.push_back(pending);
    if (entry.isDirectory) continue;
    pendingBytes_ += heldBytesOf(entry);
    contents_.begin([this, pending] { return contentsOf(pending); });
  }
}

std::optional<ZipKey> ZipExtraction::keyOf(std::size_t number) {
  const auto needsKey = [](const ZipFileEntry& entry) { return entry.isEncrypted && isRead(entry); };
  if (!needsKey(entries_[number])) return std::nullopt;
  if (keys_.empty()) {
    std::vector<ZipSalt> salts;
    for (std::size_t i = number; i < entries_.size() && salts.size() < zipAesBatch; ++i) {
      if (needsKey(entries_[i])) salts.push_back(saltOf(entries_[i], archive_));
    }
    std::ranges::move(keySource_.keysFor(salts), std::back_inserter(keys_));
  }
  ZipKey key = std::move(keys_.front());
  keys_.pop_front();
  return key;
}

ZipExtraction::Contents ZipExtraction::contentsOf(const Pending& pending) const {
  const auto payload = zipPayloadOf(*pending.entry, archive_);
  if (pending.entry->uncompressedSize <= largestHeld)
    return zipContentsOf(*pending.entry, derived(pending.key), payload);
  streamZipContents(*pending.entry, derived(pending.key), payload,
                    [](std::span<const std::byte>) { platform::ReadableFile::countRead(); });
  return std::nullopt;
}

void ZipExtraction::makeOldest() {
  const Pending pending = std::move(pending_.front());
  pending_.pop_front();
  const ZipFileEntry& entry = *pending.entry;
  if (entry.isDirectory) {
    extraction_.makeFolder(entry.name);
    return;
  }
  requireSafe(entry.name);
  const Contents contents = contents_.next();
  pendingBytes_ -= heldBytesOf(entry);
  if (!isLink(entry)) {
    makeFile(pending, contents);
    return;
  }
  if (contents) extraction_.makeLink(entry.name, platform::repairedUtf8(platform::textOf(contents->bytes())));
}

void ZipExtraction::makeFile(const Pending& pending, const Contents& contents) {
  const ZipFileEntry& entry = *pending.entry;
  if (contents) {
    extraction_.writeFile(entry.name, contents->bytes(), entry.modified);
    return;
  }
  extraction_.writeFile(entry.name, entry.modified, [&](const Extraction::Write& write) {
    streamZipContents(entry, derived(pending.key), zipPayloadOf(entry, archive_), write);
  });
}

}  // namespace quirn
