// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The left half of the window: where files are dropped, those that are there, the run, and what it made.

#pragma once

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <functional>

#include "shell/workspace_session.h"
#include "window/file_models.h"
#include "window/list_row.h"
#include "window/parts.h"
#include "window/progress_card.h"

namespace quirn::window {

class FilesColumn final : public QWidget {
 public:
  struct Commands {
    std::function<void()> addFiles;
    std::function<void()> paste;
    std::function<void()> chooseOutputFolder;
  };

  FilesColumn(WorkspaceSession& session, Commands commands, QWidget* parent);

  // Shows the session as it is now.
  void sync();
  // While files are dragged over the window.
  void setDropTarget(bool isTarget);

 private:
  QWidget* makeEmpty();
  QWidget* makeInputs();
  QWidget* makeOutputs();
  QWidget* makeFolderLine();
  void inputMenu(const QPoint& at);
  void outputMenu(const QPoint& at);
  void removeSelected();
  // The selected outputs, or all of them where none is selected.
  std::vector<std::filesystem::path> chosenOutputs() const;

  WorkspaceSession& session_;
  Commands commands_;
  InputModel* inputModel_ = nullptr;
  OutputModel* outputModel_ = nullptr;
  QStackedWidget* stack_ = nullptr;  // the drop area, or the list
  Card* inputCard_ = nullptr;
  QLabel* inputCount_ = nullptr;
  RowList* inputs_ = nullptr;
  QWidget* outputCard_ = nullptr;
  QLabel* outputCount_ = nullptr;
  RowList* outputs_ = nullptr;
  ProgressCard* progress_ = nullptr;
  ElidedLabel* folderLine_ = nullptr;
  QPushButton* resetFolder_ = nullptr;
};

}  // namespace quirn::window
