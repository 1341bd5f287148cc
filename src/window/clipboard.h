// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The desktop's clipboard.

#pragma once

#include <QString>
#include <span>

#include "core/operation_result.h"
#include "shell/pasteboard.h"

namespace quirn::window {

class Clipboard final : public Pasteboard {
 public:
  std::vector<std::filesystem::path> files() const override;
  std::optional<std::vector<std::byte>> imageBytes() const override;

  static QString text();
  static void setText(const QString& text);
  static void setFiles(const std::vector<std::filesystem::path>& files);
};

}  // namespace quirn::window
