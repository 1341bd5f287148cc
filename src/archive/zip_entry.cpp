// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_entry.h"

namespace quirn {

const char* ZipError::what() const noexcept {
  switch (kind_) {
    case Kind::corrupt:
    case Kind::unsafePath: return text_.c_str();
    case Kind::notAZip: return "not a ZIP archive";
    case Kind::needsPassword: return "the entry is encrypted";
    case Kind::wrongPassword: return "the password is wrong";
  }
  return "";
}

}  // namespace quirn
