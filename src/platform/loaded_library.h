// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A shared library that is opened at its first use. What few commands need, and costs each start of the
// program milliseconds when it is linked, is reached this way.

#pragma once

namespace quirn::platform {

class LoadedLibrary {
 public:
  // Stays open until the program ends. Throws std::runtime_error if it is not installed.
  explicit LoadedLibrary(const char* name);

  // The function of that name, whose type the library's header states.
  template <class Function>
  void find(const char* name, Function*& function) const {
    function = reinterpret_cast<Function*>(address(name));
  }

 private:
  void* address(const char* name) const;

  void* library_;
};

}  // namespace quirn::platform
