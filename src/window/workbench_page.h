// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The workbench: one text tool with its controls, what goes in and what comes out.

#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>

#include "core/banner_center.h"
#include "shell/workspace_session.h"
#include "workbench/workbench.h"

namespace quirn::window {

class WorkbenchPage final : public QWidget {
 public:
  struct Callbacks {
    std::function<void(std::vector<OutputFile>)> onComplete;
    std::function<void()> onCancel;
  };

  // The folder for what has none of its own: the person's documents, else their home.
  static std::filesystem::path offeredFolder();

  WorkbenchPage(const TextTool& tool, std::optional<std::filesystem::path> seed,
                const std::optional<std::filesystem::path>& outputDirectory, BannerCenter& banners, Callbacks callbacks,
                QWidget* parent);

 private:
  QWidget* makeHead();
  QWidget* makeControls();
  QWidget* makeInputPane();
  QWidget* makeOutputPane();
  // The input, the output and both counts as the workbench has them.
  void showInput();
  void showOutput();
  void copyOutput();
  void save();

  Workbench workbench_;
  std::optional<std::filesystem::path> seed_;
  BannerCenter& banners_;
  Callbacks callbacks_;
  QPlainTextEdit* input_ = nullptr;
  QLabel* inputCount_ = nullptr;
  QPlainTextEdit* output_ = nullptr;
  QLabel* outputCount_ = nullptr;
  QLabel* error_ = nullptr;
  QPushButton* copy_ = nullptr;
  QPushButton* save_ = nullptr;
};

}  // namespace quirn::window
