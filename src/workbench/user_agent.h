// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a User-Agent header of HTTP tells of the program and the machine that sent it.

#pragma once

#include <string>
#include <string_view>

namespace quirn {

struct NameAndVersion {
  std::string name;
  std::string version;  // may be empty
};

struct UserAgent {
  NameAndVersion browser;
  NameAndVersion system;
  std::string device;
};

UserAgent userAgentIn(std::string_view header);

}  // namespace quirn
