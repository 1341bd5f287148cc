// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A ZIP archive made of the files of a run: compressed side by side, written in order. The same files give the same
// bytes, but for the salts of encrypted ones. Memory is bounded, however large a file is.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "archive/archive_items.h"
#include "archive/zip_key_batch.h"
#include "archive/zip_writer.h"
#include "core/operation_context.h"
#include "platform/ordered_tasks.h"

namespace quirn {

class ZipCreation {
 public:
  // An empty password is none. `context` and `output` outlive it.
  ZipCreation(OperationContext& context, StagedOutput& output, std::string password);

  // A file that can't be read is passed over. Throws writeFailed and CancellationError, as finish() does.
  void add(const ArchiveItem& item);
  // Ends the archive. Gives the number of files in it.
  std::size_t finish();

 private:
  // An entry that is ready to be written.
  struct Prepared {
    ZipHeader header;
    platform::Bytes payload;
  };
  struct Pending {
    std::optional<Prepared> entry;  // nothing for a file that can't be read
    std::int64_t size = 0;          // of the file
  };

  static std::optional<Prepared> prepared(const std::string& name, InputHandle& file, const std::optional<ZipKey>& key);
  void addSmall(const ArchiveItem& item, InputHandle file);
  void addLarge(const ArchiveItem& item, InputHandle file);
  std::optional<ZipKey> nextKey();
  void writeOldest();
  void writeAllPending();

  OperationContext& context_;
  ZipWriter writer_;
  bool isEncrypted_;
  ZipKeySource keys_;
  std::int64_t pendingBytes_ = 0;
  std::size_t count_ = 0;
  platform::OrderedTasks<Pending> pending_;
};

}  // namespace quirn
