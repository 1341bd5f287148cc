// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The empty window: where to drop files, and the other ways in.

#pragma once

#include <QWidget>
#include <functional>

namespace quirn::window {

class DropArea final : public QWidget {
 public:
  DropArea(const std::function<void()>& addFiles, const std::function<void()>& paste, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quirn::window
