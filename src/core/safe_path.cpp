// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/safe_path.h"

namespace quirn {
namespace fs = std::filesystem;

std::optional<fs::path> pathInside(const fs::path& folder, const fs::path& name) {
  // A zero byte would cut the name short on its way into the kernel.
  if (name.native().find('\0') != std::string::npos) return std::nullopt;
  // Joining takes an absolute name as it is.
  fs::path relative = (folder / name).lexically_normal().lexically_relative(folder.lexically_normal());
  if (relative.empty() || *relative.begin() == "..") return std::nullopt;
  return relative;
}

}  // namespace quirn
