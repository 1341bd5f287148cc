// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes what desktops and shells read of Quirn below a folder: quirn_desktop_files FOLDER PROGRAM

#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

#include "catalog/catalog.h"
#include "desktop/completions.h"
#include "desktop/desktop_entry.h"
#include "desktop/man_page.h"
#include "desktop/service_menus.h"

namespace {

namespace fs = std::filesystem;
using quirn::desktop::GeneratedFile;

void write(const fs::path& folder, const GeneratedFile& file) {
  const fs::path path = folder / file.path;
  fs::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary);
  out.exceptions(std::ios::failbit | std::ios::badbit);
  out << file.text;
  out.close();
  using enum fs::perms;
  if (file.kind == GeneratedFile::Kind::script)
    fs::permissions(path, owner_exec | group_exec | others_exec, fs::perm_options::add);
}

std::vector<GeneratedFile> allFiles(const std::string& program) {
  quirn::OperationRegistry registry;
  quirn::registerAllOperations(registry);
  std::vector<GeneratedFile> files{quirn::desktop::desktopEntry(registry), quirn::desktop::busService(program),
                                   quirn::desktop::manPage(registry)};
  for (const auto& more : {quirn::desktop::completions(registry), quirn::desktop::serviceMenus(registry)})
    files.insert(files.end(), more.begin(), more.end());
  return files;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: quirn_desktop_files FOLDER PROGRAM\n";
    return 2;
  }
  try {
    for (const GeneratedFile& file : allFiles(argv[2])) write(argv[1], file);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
