// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The right half of the window: what can be done with the files that are there.

#pragma once

#include <QLabel>
#include <QWidget>
#include <functional>

#include "shell/workspace_session.h"
#include "window/list_row.h"
#include "window/operation_model.h"

namespace quirn::window {

class OperationsPage final : public QWidget {
 public:
  OperationsPage(WorkspaceSession& session, const OperationRegistry& registry, const std::function<void()>& openPalette,
                 QWidget* parent);

  // Shows what fits the inputs that the session has now.
  void sync();

 private:
  std::vector<const OperationType*> fitting() const;

  WorkspaceSession& session_;
  const OperationRegistry& registry_;
  std::vector<const OperationType*> shown_;
  QLabel* title_ = nullptr;
  QLabel* nothing_ = nullptr;
  RowList* list_ = nullptr;
  OperationModel* model_ = nullptr;
};

}  // namespace quirn::window
