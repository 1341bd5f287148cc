// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The window with everything around it: Qt's application, the session, the connection to later starts
// and to the desktop.

#pragma once

#include <QApplication>
#include <memory>

#include "shell/window_start.h"
#include "window/clipboard.h"
#include "window/desktop_settings.h"
#include "window/main_window.h"
#include "window/window_queue.h"

namespace quirn::window {

// Gives the application the look of Quirn. `desktopPalette` is the one that the desktop has set, if any.
class Look final {
 public:
  Look();

  void apply(const Appearance& appearance);

 private:
  bool hasDesktopPalette_;
};

// Where the session keeps what it remembers and what is pasted; tests have places of their own.
struct Places {
  OutputDirectoryStore outputDirectoryStore;
  std::function<std::filesystem::path()> temporaryFolder;
};

// Made after the QApplication, and gone before it.
class Application final {
 public:
  Application(const OperationRegistry& registry, Places places);

  // Does what a start asks for, this one or a later one.
  void handle(const WindowRequest& request);

  WindowQueue& queue() { return queue_; }
  WorkspaceSession& session() { return session_; }
  BannerCenter& banners() { return banners_; }
  EventBus& events() { return events_; }
  MainWindow& window() { return window_; }

 private:
  const OperationRegistry& registry_;
  WindowQueue queue_;
  BannerCenter banners_;
  EventBus events_;
  Clipboard clipboard_;
  WorkspaceSession session_;
  MainWindow window_;
};

// Runs until the window is closed; the exit status.
int run(WindowStart& start);

}  // namespace quirn::window
