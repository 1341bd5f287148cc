// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The folder that an archive is extracted into, and the rules for what may go there, whatever the archive.
//
// Names are judged as text here, and once more by the kernel where they are made, against links that the archive itself
// may have brought. What was extracted before a fault stays.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/operation_context.h"
#include "core/staged_folder.h"

namespace quirn {

// Whether the entry is litter that one system's archiver leaves in archives for others: resource forks and the like.
bool isLitter(std::string_view name);

// Throws unsupportedInput for a name that leads out of the folder, or nowhere in it.
void requireSafe(std::string_view name);

class Extraction {
 public:
  using Date = StagedFolder::Date;

  // Makes the folder "{stem} (extracted)". All three outlive it. Throws writeFailed.
  Extraction(const InputFile& archive, std::string stem, OperationContext& context);

  // Extracts with `entries`, which calls what follows. Gives the folder, or throws what went wrong, with what was
  // extracted until then left in place; "Archive is empty." where that is nothing.
  OutputFile run(const std::function<void()>& entries);

  // Each throws writeFailed, unsupportedInput for a name that is not safe or a budget that is spent, and
  // CancellationError.
  void makeFolder(std::string_view name);
  void writeFile(std::string_view name, std::span<const std::byte> bytes, Date modified);
  // A file whose content comes in pieces: what `fill` hands to the function that it is given.
  using Write = std::function<void(std::span<const std::byte>)>;
  void writeFile(std::string_view name, Date modified, const std::function<void(const Write&)>& fill);
  // A link that would lead out of the folder isn't made, without an error.
  void makeLink(std::string_view name, std::string_view target);

 private:
  void begin(std::string_view name);
  void countFile(std::string_view name);
  void countBytes(std::size_t bytes);
  void keep();

  const InputFile& archive_;
  OperationContext& context_;
  std::unique_ptr<StagedFolder> folder_;
  std::int64_t entryCount_ = 0;
  std::int64_t bytesOut_ = 0;
  std::int64_t extractedCount_ = 0;  // files and links
  bool isUntouched_ = true;
};

}  // namespace quirn
