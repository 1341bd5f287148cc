// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/application.h"

#include <QStyleFactory>
#include <array>
#include <memory>

#include "core/router.h"
#include "platform/temporary_folder.h"
#include "window/desktop_service.h"
#include "window/icon.h"
#include "window/qt_text.h"
#include "window/style.h"

namespace quirn::window {

Look::Look() {
  loadIcons();
  const std::unique_ptr<QStyle> fusion(QStyleFactory::create("Fusion"));
  const QPalette plain = fusion->standardPalette();
  const QPalette now = QApplication::palette();
  const auto isPlain = [&](QPalette::ColorRole role) { return plain.color(role) == now.color(role); };
  hasDesktopPalette_ = !(isPlain(QPalette::Window) && isPlain(QPalette::Highlight));
}

void Look::apply(const Appearance& appearance) {
  QApplication::setStyle(std::make_unique<Style>(appearance.motion).release());  // which the application owns
  if (!hasDesktopPalette_) QApplication::setPalette(ownPalette(appearance.scheme));
}

Application::Application(const OperationRegistry& registry, Places places)
    : registry_(registry),
      banners_(queue_),
      session_({.registry = registry,
                .queue = queue_,
                .banners = banners_,
                .events = events_,
                .pasteboard = clipboard_,
                .outputDirectoryStore = std::move(places.outputDirectoryStore),
                .temporaryFolder = std::move(places.temporaryFolder)}),
      window_({.session = session_, .registry = registry, .banners = banners_, .events = events_}) {}

void Application::handle(const WindowRequest& request) {
  window_.comeToFront(request.activationToken);
  const QuirnRouter router(registry_, events_, queue_);
  if (request.operationID.empty()) {
    router.handle(request.locations);
    return;
  }
  const OperationType* const type = registry_.byID(request.operationID);
  if (type != nullptr && request.locations.empty()) {
    session_.attemptRun(*type, session_.inputs());
    return;
  }
  QuirnRunRequest run{.opID = request.operationID, .urls = {}};
  for (const std::string& location : request.locations) {
    auto path = location.starts_with("file:") ? pathOf(QUrl::fromEncoded(QByteArray::fromStdString(location)))
                                              : std::filesystem::path(location);
    if (!path.empty()) run.urls.push_back(std::move(path));
  }
  events_.post(notifications::runOpOnURLs, run);
}

int run(WindowStart& start) {
  std::array<char, 6> name{"quirn"};
  std::array<char*, 2> arguments{name.data(), nullptr};
  int argumentCount = 1;
  QApplication::setDesktopSettingsAware(true);
  QGuiApplication::setDesktopFileName(applicationID);
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QApplication qt(argumentCount, arguments.data());
  QApplication::setApplicationName("Quirn");
  QApplication::setApplicationVersion(QUIRN_VERSION);
  Look look;
  QApplication::setWindowIcon(QIcon(":/quirn/quirn.svg"));
  DesktopSettings settings;
  look.apply(settings.appearance());
  settings.whenChanged([&look](const Appearance& appearance) { look.apply(appearance); });

  Application application(start.registry, {.outputDirectoryStore = OutputDirectoryStore(),
                                           .temporaryFolder = &platform::privateTemporaryFolder});
  application.window().whenClosed = [] { QApplication::quit(); };
  application.handle(start.request);
  if (start.instance != nullptr) {
    start.instance->listen([&application](const std::string& message) {
      application.queue().post(
          [&application, request = WindowRequest::decoded(message)] { application.handle(request); });
    });
  }
  DesktopService service([&application](const WindowRequest& request) { application.handle(request); });
  application.queue().post([&service] { service.offer(); });
  return QApplication::exec();
}

}  // namespace quirn::window
