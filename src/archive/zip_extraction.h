// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The entries of a ZIP archive on their way into a folder: read and checked side by side, made in the order of the
// directory.

#pragma once

#include <deque>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "archive/extraction.h"
#include "archive/zip_contents.h"
#include "archive/zip_entry.h"
#include "archive/zip_key_batch.h"
#include "platform/ordered_tasks.h"

namespace quirn {

class ZipExtraction {
 public:
  // All outlive it.
  ZipExtraction(std::span<const std::byte> archive, std::span<const ZipFileEntry> entries, std::string password,
                Extraction& extraction)
      : archive_(archive), entries_(entries), keySource_(std::move(password)), extraction_(extraction) {}

  // Throws ZipError, ByteReader::OutOfBounds, and what the extraction throws.
  void run();

 private:
  struct Pending {
    const ZipFileEntry* entry = nullptr;
    std::optional<ZipKey> key;
  };
  // Nothing of an entry that is too large to be held: it was checked, and is read once more when it is made.
  using Contents = std::optional<ZipContents>;

  Contents contentsOf(const Pending& pending) const;
  void lookAhead();
  std::optional<ZipKey> keyOf(std::size_t number);
  void makeOldest();
  void makeFile(const Pending& pending, const Contents& contents);

  std::span<const std::byte> archive_;
  std::span<const ZipFileEntry> entries_;
  ZipKeySource keySource_;
  Extraction& extraction_;
  std::size_t next_ = 0;  // the first entry that is not pending yet
  std::uint64_t pendingBytes_ = 0;
  std::deque<Pending> pending_;
  std::deque<ZipKey> keys_;                    // of the encrypted ones among the entries from next_ on
  platform::OrderedTasks<Contents> contents_;  // of those pending that are no folders
};

}  // namespace quirn
