// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/archive_items.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace quirn {

std::vector<ArchiveItem> archiveItemsOf(const InputFile& input, OperationContext& context) {
  if (!input.isDirectory) return {{input.fileName(), input}};
  const std::string parent = input.url.parent_path().native();
  const std::size_t cut = parent.ends_with('/') ? parent.size() : parent.size() + 1;
  std::vector<ArchiveItem> items;
  for (InputFile& file : context.enumerate(input)) {
    std::string name = file.url.native().substr(cut);
    items.push_back({std::move(name), std::move(file)});
  }
  return items;
}

std::vector<ArchiveItem> archiveItemsOf(std::span<const InputFile> inputs, OperationContext& context) {
  std::vector<ArchiveItem> all;
  for (const InputFile& input : inputs) {
    context.checkCancellation();
    std::ranges::move(archiveItemsOf(input, context), std::back_inserter(all));
  }
  context.progress().setTotalUnitCount(std::max<std::int64_t>(1, std::ssize(all)));
  return all;
}

std::string archiveStemOf(std::span<const InputFile> inputs) {
  return inputs.size() == 1 ? inputs.front().stem() : "Archive";
}

std::string createdSummary(const OutputFile& archive, std::size_t count) {
  return fmt::format("Created {} ({} files)", archive.url.filename().string(), count);
}

}  // namespace quirn
