// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Folders and files that a test makes and that are gone after it.

#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quirn::tests {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

  // Writes a file, and the folders above it, and gives its location.
  std::filesystem::path file(const std::filesystem::path& name, std::string_view content) const;
  std::filesystem::path folder(const std::filesystem::path& name) const;

 private:
  std::filesystem::path path_;
};

std::string contentOf(const std::filesystem::path& file);

// The names in a folder, hidden ones too, in order.
std::vector<std::string> namesIn(const std::filesystem::path& folder);

// Every file beneath a folder with its content.
std::map<std::string, std::string> snapshotOf(const std::filesystem::path& folder);

}  // namespace quirn::tests
