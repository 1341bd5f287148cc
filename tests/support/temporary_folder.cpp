// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/temporary_folder.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <system_error>

namespace quirn::tests {
namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::canonical(fs::temp_directory_path()) / "quirn-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category(), pattern);
  path_ = pattern;
  // Programs that run as another user write here too.
  fs::permissions(path_, fs::perms::all);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::file(const fs::path& name, std::string_view content) const {
  const fs::path path = path_ / name;
  fs::create_directories(path.parent_path());
  std::ofstream stream(path, std::ios::binary);
  stream << content;
  if (!stream.flush()) throw std::system_error(errno, std::generic_category(), path.string());
  return path;
}

fs::path TemporaryFolder::folder(const fs::path& name) const {
  fs::create_directories(path_ / name);
  return path_ / name;
}

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  EXPECT_TRUE(stream) << file << " is not there";
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> namesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

std::map<std::string, std::string> snapshotOf(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.symlink_status().type() == fs::file_type::regular)
      files[entry.path().lexically_relative(folder).string()] = contentOf(entry.path());
  }
  return files;
}

}  // namespace quirn::tests
