// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The one window: files on the left, what can be done with them on the right, and in its place the
// options of an operation or a text tool. It shows the session and hands it what the person does.

#pragma once

#include <QStackedWidget>
#include <QWidget>
#include <functional>

#include "shell/workspace_session.h"
#include "window/banner_stack.h"
#include "window/command_palette.h"
#include "window/files_column.h"
#include "window/operations_page.h"
#include "window/options_panel.h"

namespace quirn::window {

class MainWindow final : public QWidget {
 public:
  // All of these outlive the window.
  struct Parts {
    WorkspaceSession& session;
    const OperationRegistry& registry;
    BannerCenter& banners;
    EventBus& events;
  };

  explicit MainWindow(Parts parts);

  // Brings the window before the others, with the leave that the desktop gave in `activationToken`.
  void comeToFront(const std::string& activationToken);

  // Called when the window has been closed for good.
  std::function<void()> whenClosed;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* makeHeader();
  QWidget* makeBody();
  void makeShortcuts();
  void shortcut(const QKeySequence& keys, const std::function<void()>& action);
  void sync();
  void syncWorkbench();
  void syncPanel();
  void addFiles();
  void chooseOutputFolder();
  void paste();
  void askBeforeClosing();
  void showMenu(QWidget* below);

  WorkspaceSession& session_;
  const OperationRegistry& registry_;
  BannerCenter& banners_;
  EventBus& events_;
  QWidget* waysIn_ = nullptr;        // the buttons that bring files, which the workbench has no use for
  QStackedWidget* pages_ = nullptr;  // the body, or the workbench
  QStackedWidget* right_ = nullptr;  // the operations, or the options
  FilesColumn* files_ = nullptr;
  OperationsPage* operations_ = nullptr;
  OptionsPanel* options_ = nullptr;
  CommandPalette* palette_ = nullptr;
  QWidget* workbench_ = nullptr;
  platform::Uuid shownEditing_;
  bool isClosing_ = false;
  std::vector<Subscription> subscriptions_;
};

}  // namespace quirn::window
