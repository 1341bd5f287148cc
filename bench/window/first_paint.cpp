// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Opens the window as the program does and prints milliseconds: from the start of the process, which
// the argument gives in nanoseconds since 1970, to the first paint; and for the suggestions for 1,000 inputs.

#include <QApplication>
#include <QEvent>
#include <chrono>
#include <cstdlib>
#include <iostream>

#include "catalog/catalog.h"
#include "window/application.h"

namespace {

using Clock = std::chrono::system_clock;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class FirstPaint final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    hasCome = hasCome || (event->type() == QEvent::Paint && watched->objectName() == "operations");
    return false;
  }
  bool hasCome = false;
};

double suggestionTime(const quirn::OperationRegistry& registry) {
  std::vector<quirn::InputFile> inputs;
  for (int i = 0; i < 1000; ++i) {
    inputs.push_back({.id = quirn::platform::Uuid::random(),
                      .url = "/tmp/photo" + std::to_string(i) + ".jpg",
                      .contentType = quirn::ContentType("image/jpeg"),
                      .size = i});
  }
  // In the window the files have been looked at by then, which opens the database of types.
  static_cast<void>(inputs.front().contentType.conformsTo(quirn::ContentKind::pdf));
  const auto start = Clock::now();
  const auto types = registry.suggestions(inputs);
  return types.empty() ? -1 : millisecondsSince(start);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const Clock::time_point start{
      std::chrono::duration_cast<Clock::duration>(std::chrono::nanoseconds(std::atoll(argv[1])))};
  quirn::OperationRegistry registry;
  quirn::registerAllOperations(registry);
  QApplication qt(argc, argv);
  quirn::window::Look look;
  const quirn::window::DesktopSettings settings;
  look.apply(settings.appearance());
  quirn::window::Application application(
      registry, {.outputDirectoryStore = quirn::OutputDirectoryStore(), .temporaryFolder = {}});
  FirstPaint paint;
  qt.installEventFilter(&paint);
  application.handle({});
  // The list is painted in its viewport, with the window around it.
  for (QWidget* const each : application.window().findChildren<QWidget*>()) {
    if (each->objectName() == "qt_scrollarea_viewport") each->setObjectName(each->parent()->objectName());
  }
  while (!paint.hasCome) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  std::cout << millisecondsSince(start) << ' ' << suggestionTime(registry) << '\n';
}
