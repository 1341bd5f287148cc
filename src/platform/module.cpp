// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/module.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <stdexcept>

namespace quirn::platform {
namespace {
namespace fs = std::filesystem;

bool isModuleName(const std::string& name) {
  constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyz0123456789-";
  return !name.empty() && name.find_first_not_of(allowed) == std::string::npos;
}

// Beside the program, where a build puts it, or in the library folder of the same installation.
fs::path moduleFile(const std::string& name) {
  const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
  const std::string file = "libquirn-" + name + ".so";
  const std::array places{folder / file, folder.parent_path() / QUIRN_MODULE_FOLDER / file};
  const auto found = std::ranges::find_if(places, [](const fs::path& place) { return fs::exists(place); });
  if (found == places.end()) throw std::runtime_error("the module " + file + " is missing");
  return *found;
}

}  // namespace

void* moduleFunction(const std::string& module, const char* function) {
  if (!isModuleName(module)) throw std::runtime_error("not a module's name: " + module);
  void* const library = ::dlopen(moduleFile(module).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw std::runtime_error(::dlerror());
  void* const address = ::dlsym(library, function);
  if (address == nullptr) throw std::runtime_error(::dlerror());
  return address;
}

}  // namespace quirn::platform
