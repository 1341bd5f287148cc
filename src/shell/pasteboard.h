// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the desktop's clipboard holds, as the window reads it.

#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

namespace quirn {

class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  // Files that were copied in a file manager.
  virtual std::vector<std::filesystem::path> files() const = 0;

  // An image as bytes, as PNG where the clipboard offers that.
  virtual std::optional<std::vector<std::byte>> imageBytes() const = 0;
};

}  // namespace quirn
