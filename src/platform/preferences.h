// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A few texts that outlive the program, in the person's configuration folder (XDG Base Directory
// standard).

#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quirn::platform {

class Preferences {
 public:
  // The file "quirn/{domain}.conf" in the configuration folder. Where the environment names no such
  // folder, nothing is ever remembered.
  explicit Preferences(std::string_view domain);
  static Preferences at(std::filesystem::path file);

  // Nothing if the key is not there, or the file is missing, damaged or can't be read.
  std::optional<std::string> value(std::string_view key) const;

  // Nothing removes the key. False, with the file as it was, if it can't be written.
  bool setValue(std::string_view key, std::optional<std::string> value) const;

 private:
  Preferences() = default;
  std::map<std::string, std::string, std::less<>> read() const;

  std::filesystem::path file_;
};

}  // namespace quirn::platform
