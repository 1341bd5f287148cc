// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A file too large to be compressed as a whole, as an entry of a ZIP archive. It is compressed in pieces on all
// processors. Its header comes first and says how large it becomes, so the pieces are kept; where they are too many
// even compressed, they are counted and made once more, since the same bytes give the same pieces.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "archive/archive_items.h"
#include "archive/byte_sink.h"
#include "archive/zip_key_batch.h"
#include "archive/zip_writer.h"
#include "core/operation_context.h"

namespace quirn {

// What the header says of an open file: its name, date and permissions.
ZipHeader zipHeaderOf(const std::string& name, const InputHandle& file);

class LargeZipEntry {
 public:
  // Both outlive it.
  LargeZipEntry(OperationContext& context, const ArchiveItem& item) : context_(context), item_(item) {}

  // Reads all of it. False if it can't be read. Throws CancellationError.
  bool measure(InputHandle file);

  // Throws writeFailed, CancellationError, and readFailed for a file that has changed meanwhile.
  void writeTo(ZipWriter& writer, const std::optional<ZipKey>& key);

 private:
  void writePayload(const ByteSink& sink);
  void readAgain(const ByteSink& sink);
  void compressAgain(const ByteSink& sink);
  template <class Take>
  void readThrough(InputHandle& file, std::uint64_t mostBytes, Take take) const;

  OperationContext& context_;
  const ArchiveItem& item_;
  ZipHeader header_;
  std::vector<platform::Bytes> pieces_;
  bool arePiecesKept_ = true;
};

}  // namespace quirn
