// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The real window with the real catalog, on places of its own, and what a person does with it.

#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <chrono>
#include <filesystem>
#include <functional>
#include <semaphore>
#include <string>
#include <vector>

#include "catalog/catalog.h"
#include "core/box/worker.h"
#include "shell/workspace.h"
#include "support/temporary_folder.h"
#include "window/application.h"
#include "window/qt_text.h"

namespace quirn::tests {

// A program that runs operations is started again as their worker; nothing in the program that a test began.
inline std::optional<int> workerStatus(int argc, char** argv) {
  if (argc != 3 || std::string_view(argv[1]) != "--worker") return std::nullopt;
  registerAllOperations(OperationRegistry::shared());
  return box::runWorker(argv[2], OperationRegistry::shared());
}

class WindowUnderTest {
 public:
  WindowUnderTest() {
    registerAllOperations(registry);
    registry.registerOperation(fakeType("fake.slow", "Slow", {}, [this](auto, OperationContext& context) {
      context.setStatus("Sleeping…");
      while (!proceed.try_acquire_for(std::chrono::milliseconds(1))) context.checkCancellation();
      return OperationResult();
    }));
    registry.registerOperation(OperationType::of<LoudnessOperation>());
    application.emplace(registry, window::Places{.outputDirectoryStore = OutputDirectoryStore(
                                                     platform::Preferences::at(folder / "settings" / "quirn.conf")),
                                                 .temporaryFolder = [this] { return folder.path(); }});
    application->window().show();
    turn();
  }

  window::MainWindow& window() { return application->window(); }
  WorkspaceSession& session() { return application->session(); }
  const OperationType& type(std::string_view id) const { return *registry.byID(id); }

  // Lets Qt handle what is there.
  static void turn() { QApplication::processEvents(); }
  // Until the condition holds; half a minute at most.
  static bool wait(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      QApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    turn();
    return true;
  }

  void drop(const std::vector<std::filesystem::path>& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const auto& file : files) urls << window::urlOf(file);
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &enter);
    QDropEvent dropped(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window(), &dropped);
  }
  bool dropAndWait(const std::vector<std::filesystem::path>& files) {
    const std::size_t expected = session().inputs().size() + files.size();
    drop(files);
    return wait([&] { return session().inputs().size() == expected; });
  }

  QWidget* find(const QString& name) { return window().findChild<QWidget*>(name); }
  QAbstractItemView* list(const QString& name) { return window().findChild<QAbstractItemView*>(name); }
  // The titles of a list's rows, headings included.
  std::vector<std::string> titles(const QString& name) {
    std::vector<std::string> texts;
    const QAbstractItemModel* const model = list(name)->model();
    for (int row = 0; row < model->rowCount(); ++row)
      texts.push_back(model->index(row, 0).data().toString().toStdString());
    return texts;
  }
  // Clicks the row of that title; false if there is none.
  bool choose(const QString& name, const std::string& title);
  bool click(const QString& buttonName);
  void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {});
  void type(QWidget* widget, const QString& text) {
    for (const QChar character : text) press(widget, 0, Qt::NoModifier, character);
  }
  std::vector<std::string> bannerTexts() {
    std::vector<std::string> texts;
    for (const Banner& banner : application->banners().banners()) texts.push_back(banner.message);
    return texts;
  }

  TemporaryFolder folder;
  std::counting_semaphore<> proceed{0};
  OperationRegistry registry;
  std::optional<window::Application> application;
};

inline bool WindowUnderTest::choose(const QString& name, const std::string& title) {
  QAbstractItemView* const view = list(name);
  for (int row = 0; row < view->model()->rowCount(); ++row) {
    const QModelIndex index = view->model()->index(row, 0);
    if (index.data().toString().toStdString() != title) continue;
    view->scrollTo(index);
    view->setCurrentIndex(index);
    press(view, Qt::Key_Return);
    return true;
  }
  return false;
}

inline bool WindowUnderTest::click(const QString& buttonName) {
  auto* const button = window().findChild<QAbstractButton*>(buttonName);
  if (button == nullptr || !button->isVisible() || !button->isEnabled()) return false;
  button->click();
  turn();
  return true;
}

inline void WindowUnderTest::press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
  QApplication::sendEvent(widget, &down);
  QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
  QApplication::sendEvent(widget, &up);
  turn();
}

}  // namespace quirn::tests
