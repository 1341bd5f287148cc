// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/content_type.h"

#include <dlfcn.h>

#include <cstddef>
#include <memory>
#include <stdexcept>

namespace quirn::platform {
namespace {

// GIO reads the database. It is loaded when first asked, not linked: it brings ten libraries, and a
// command that looks at no file must not wait for them.
class Gio {
 public:
  char* (*guess)(const char* name, const unsigned char* data, std::size_t size, int* uncertain) = nullptr;
  int (*isA)(const char* type, const char* ancestor) = nullptr;
  void (*free)(void*) = nullptr;

  static const Gio& loaded() {
    static const Gio gio;
    return gio;
  }

 private:
  Gio() {
    void* const library = ::dlopen("libgio-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(::dlerror());
    find(library, "g_content_type_guess", guess);
    find(library, "g_content_type_is_a", isA);
    find(library, "g_free", free);
  }

  template <class Function>
  static void find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(::dlsym(library, name));
    if (function == nullptr) throw std::runtime_error(name);
  }
};

}  // namespace

std::string mimeTypeOfName(const std::filesystem::path& name) {
  const Gio& gio = Gio::loaded();
  const std::string file = name.filename().string();
  const std::unique_ptr<char, void (*)(void*)> type(gio.guess(file.c_str(), nullptr, 0, nullptr), gio.free);
  return type ? type.get() : "application/octet-stream";
}

bool isMimeSubtype(const std::string& type, const std::string& ancestor) {
  return Gio::loaded().isA(type.c_str(), ancestor.c_str()) != 0;
}

}  // namespace quirn::platform
