// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Finding an operation by typing: a field and what it finds, over the window. What doesn't fit the files
// is found as well, and says why.

#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QWidget>
#include <optional>

#include "core/operation_search.h"
#include "shell/workspace_session.h"
#include "window/list_row.h"
#include "window/operation_model.h"

namespace quirn::window {

class CommandPalette final : public QWidget {
 public:
  CommandPalette(WorkspaceSession& session, const OperationRegistry& registry, QWidget* parent);

  // Over the whole of the parent, with an empty field.
  void open();
  void close();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void find();
  void step(int rows);
  void choose(const QModelIndex& index);
  void place();
  const OperationSearch& search();

  WorkspaceSession& session_;
  const OperationRegistry& registry_;
  std::optional<OperationSearch> search_;  // made when it is first needed
  QWidget* card_ = nullptr;
  QLineEdit* field_ = nullptr;
  RowList* list_ = nullptr;
  OperationModel* model_ = nullptr;
  QWidget* nothing_ = nullptr;
  QPointer<QWidget> focusBefore_;
};

}  // namespace quirn::window
