// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The run that is under way: its name, what it does just now, how far it is, and the way to stop it.

#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "shell/workspace_session.h"

namespace quirn::window {

class ProgressCard final : public QWidget {
 public:
  ProgressCard(WorkspaceSession& session, QWidget* parent);

  // Shows itself while a run is under way.
  void sync();

 private:
  void showStatus();

  WorkspaceSession& session_;
  Subscription subscription_;
  QTimer statusTimer_;
  QLabel* name_ = nullptr;
  QLabel* status_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

}  // namespace quirn::window
