// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What goes into an archive of files and folders.

#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/input_file.h"
#include "core/operation_context.h"

namespace quirn {

struct ArchiveItem {
  std::string name;  // with "/"; begins with the name of the folder that it was found in
  InputFile file;
};

// A file, or the regular files beneath a folder, hidden ones too. Empty folders leave no trace, and links are not
// followed. Throws readFailed for a folder that can't be read.
std::vector<ArchiveItem> archiveItemsOf(const InputFile& input, OperationContext& context);

// The items of all inputs, which is also when a run learns how much there is to do: progress counts items from then on.
std::vector<ArchiveItem> archiveItemsOf(std::span<const InputFile> inputs, OperationContext& context);

// What an archive of these inputs is named for: the one, or "Archive".
std::string archiveStemOf(std::span<const InputFile> inputs);

// "Created {file} ({count} files)"
std::string createdSummary(const OutputFile& archive, std::size_t count);

}  // namespace quirn
