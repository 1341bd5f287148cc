// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A file that is made from the registry at build time, for another program to read.

#pragma once

#include <string>

namespace quirn::desktop {

struct GeneratedFile {
  enum class Kind { text, script };  // a script may be executed

  std::string path;  // below the installation's share/
  std::string text;
  Kind kind = Kind::text;
};

}  // namespace quirn::desktop
