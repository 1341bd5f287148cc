// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/loaded_library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace quirn::platform {

LoadedLibrary::LoadedLibrary(const char* name) : library_(::dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
  if (library_ == nullptr) throw std::runtime_error(::dlerror());
}

void* LoadedLibrary::address(const char* name) const {
  void* const found = ::dlsym(library_, name);
  if (found == nullptr) throw std::runtime_error(name);
  return found;
}

}  // namespace quirn::platform
