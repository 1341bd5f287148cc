// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/output_directory_store.h"

#include <system_error>

namespace quirn {
namespace {

constexpr std::string_view key = "outputDirectoryBookmark";

}  // namespace

std::optional<std::filesystem::path> OutputDirectoryStore::load() const {
  std::filesystem::path folder = preferences_.value(key).value_or("");
  std::error_code gone;
  if (!folder.is_absolute() || !std::filesystem::is_directory(folder, gone)) return std::nullopt;
  return folder;
}

bool OutputDirectoryStore::save(const std::filesystem::path& folder) const {
  return preferences_.setValue(key, folder.string());
}

bool OutputDirectoryStore::clear() const {
  return preferences_.setValue(key, std::nullopt);
}

}  // namespace quirn
