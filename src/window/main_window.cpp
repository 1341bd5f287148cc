// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/main_window.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPropertyAnimation>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <algorithm>
#include <memory>

#include "window/child.h"
#include "window/file_actions.h"
#include "window/icon.h"
#include "window/parts.h"
#include "window/qt_text.h"
#include "window/workbench_page.h"
#include "workbench/all_text_tools.h"

namespace quirn::window {
namespace {

constexpr QSize usualSize{1080, 720};
constexpr QSize leastSize{720, 480};
constexpr int widestRight = 560;

// Comes in from the side like on a spring; at once where motion is to be reduced.
void slideIn(QWidget* widget) {
  const int duration = widget->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, widget);
  if (duration == 0) return;
  auto* const animation = child<QPropertyAnimation>(static_cast<QObject*>(widget), widget, "pos");
  animation->setDuration(duration * 2);
  animation->setStartValue(widget->pos() + QPoint(36, 0));
  animation->setEndValue(widget->pos());
  animation->setEasingCurve(QEasingCurve::OutBack);
  animation->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace

MainWindow::MainWindow(Parts parts)
    : session_(parts.session), registry_(parts.registry), banners_(parts.banners), events_(parts.events) {
  setWindowTitle("Quirn");
  setObjectName("mainWindow");
  setAcceptDrops(true);
  setMinimumSize(leastSize);
  resize(usualSize);
  auto* const layout = layoutOf<QVBoxLayout>(this, 12, {16, 10, 16, 16});
  layout->addWidget(makeHeader());
  pages_ = child<QStackedWidget>(this);
  pages_->addWidget(makeBody());
  layout->addWidget(pages_, 1);
  palette_ = child<CommandPalette>(this, session_, registry_);
  child<BannerStack>(this, banners_);
  makeShortcuts();
  const auto on = [this](const Notification<NoPayload>& notification, const std::function<void()>& action) {
    subscriptions_.push_back(events_.subscribe(notification, std::function([action](const NoPayload&) { action(); })));
  };
  on(notifications::openFiles, [this] { addFiles(); });
  on(notifications::openPalette, [this] { palette_->open(); });
  subscriptions_.push_back(session_.changed().subscribe([this] { sync(); }));
  sync();
}

QWidget* MainWindow::makeHeader() {
  auto* const header = child<QWidget>(this);
  auto* const layout = layoutOf<QHBoxLayout>(header, 8);
  waysIn_ = child<QWidget>(header);
  auto* const ways = layoutOf<QHBoxLayout>(waysIn_, 4);
  QPushButton* const add = quietTextButton(waysIn_, "plus", "Add Files");
  add->setToolTip("Choose files to work on (Ctrl+O)");
  connect(add, &QPushButton::clicked, this, [this] { events_.post(notifications::openFiles); });
  QPushButton* const pasting = quietTextButton(waysIn_, "paste", "Paste");
  pasting->setToolTip("Paste files or an image (Ctrl+V)");
  connect(pasting, &QPushButton::clicked, this, [this] { paste(); });
  ways->addWidget(add);
  ways->addWidget(pasting);
  layout->addWidget(waysIn_);
  layout->addStretch(1);
  QPushButton* const search = button(header, "search", "Search operations…   Ctrl+K");
  search->setObjectName("searchButton");
  search->setAccessibleName("Search operations");
  search->setMinimumWidth(280);
  connect(search, &QPushButton::clicked, this, [this] { events_.post(notifications::openPalette); });
  layout->addWidget(search);
  layout->addStretch(1);
  QPushButton* const menu = quietButton(header, "menu", "Menu");
  menu->setToolTip("Menu (F10)");
  menu->setShortcut(QKeySequence(Qt::Key_F10));
  connect(menu, &QPushButton::clicked, this, [this, menu] { showMenu(menu); });
  layout->addWidget(menu);
  return header;
}

QWidget* MainWindow::makeBody() {
  auto* const body = child<QWidget>(this);
  auto* const layout = layoutOf<QHBoxLayout>(body, 14);
  files_ = child<FilesColumn>(body, session_,
                              FilesColumn::Commands{.addFiles = [this] { events_.post(notifications::openFiles); },
                                                    .paste = [this] { paste(); },
                                                    .chooseOutputFolder = [this] { chooseOutputFolder(); }});
  layout->addWidget(files_, 11);
  auto* const card = child<Card>(body);
  card->setMaximumWidth(widestRight);
  auto* const inside = layoutOf<QVBoxLayout>(card);
  right_ = child<QStackedWidget>(card);
  operations_ =
      child<OperationsPage>(right_, session_, registry_, [this] { events_.post(notifications::openPalette); });
  options_ = child<OptionsPanel>(right_, session_, banners_);
  right_->addWidget(operations_);
  right_->addWidget(options_);
  inside->addWidget(right_);
  layout->addWidget(card, 9);
  return body;
}

void MainWindow::shortcut(const QKeySequence& keys, const std::function<void()>& action) {
  connect(child<QShortcut>(this, keys), &QShortcut::activated, this, action);
}

void MainWindow::makeShortcuts() {
  shortcut(QKeySequence::Open, [this] { events_.post(notifications::openFiles); });
  shortcut(QKeySequence::Paste, [this] { paste(); });
  shortcut(QKeySequence(Qt::CTRL | Qt::Key_K), [this] { events_.post(notifications::openPalette); });
  shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete), [this] { session_.clear(); });
  shortcut(QKeySequence(Qt::CTRL | Qt::Key_Period), [this] { session_.cancelRun(); });
  shortcut(QKeySequence::Close, [this] { close(); });
  shortcut(QKeySequence::Quit, [this] { close(); });
}

void MainWindow::showMenu(QWidget* below) {
  QMenu menu(this);
  const auto add = [&](std::string_view drawing, const QString& text, const QKeySequence& keys, auto action) {
    QAction* const made = menu.addAction(icon(drawing), text, this, action);
    made->setShortcut(keys);
    return made;
  };
  add("plus", "Add Files…", QKeySequence::Open, [this] { events_.post(notifications::openFiles); });
  add("paste", "Paste", QKeySequence::Paste, [this] { paste(); });
  add("search", "Search Operations…", QKeySequence(Qt::CTRL | Qt::Key_K),
      [this] { events_.post(notifications::openPalette); });
  menu.addSeparator();
  add("folder", "Choose Output Folder…", {}, [this] { chooseOutputFolder(); });
  add("return", "Save Next to Original Files", {}, [this] {
    session_.resetOutputDirectory();
  })->setEnabled(session_.outputDirectory().has_value());
  add("trash", "Clear Dropped Files", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete), [this] {
    session_.clear();
  })->setEnabled(!session_.inputs().empty());
  menu.addSeparator();
  add("info", "About Quirn", {}, [this] {
    QMessageBox::about(this, "About Quirn",
                       "Quirn " QUIRN_VERSION
                       "\n\nA toolbox for files. Everything runs on this computer; inputs are never changed.\n\n"
                       "Free software under the GNU General Public License, version 3 or later.");
  });
  add("close", "Quit", QKeySequence::Quit, [this] { close(); });
  menu.exec(below->mapToGlobal(QPoint(below->width() - menu.sizeHint().width(), below->height() + 4)));
}

// --- showing the session --------------------------------------------------------------------------

void MainWindow::sync() {
  files_->sync();
  operations_->sync();
  syncPanel();
  syncWorkbench();
  waysIn_->setVisible(workbench_ == nullptr);
  if (isClosing_ && !session_.isActive()) close();
}

void MainWindow::syncPanel() {
  const bool isNew = options_->sync();
  right_->setCurrentWidget(session_.configuring() != nullptr ? static_cast<QWidget*>(options_) : operations_);
  if (isNew) slideIn(options_);
}

void MainWindow::syncWorkbench() {
  const EditingSession* const editing = session_.editing();
  if (editing != nullptr && editing->id == shownEditing_) return;
  if (workbench_ != nullptr) {
    pages_->removeWidget(workbench_);
    workbench_->deleteLater();  // it may be what asked for its end
    workbench_ = nullptr;
  }
  if (editing == nullptr) return;
  shownEditing_ = editing->id;
  const TextTool* const tool = textToolByID(editing->opType->info().operationID);
  if (tool == nullptr) {
    banners_.post(BannerStyle::warning, "This build has no editor for that.");
    session_.cancelEditing();
    return;
  }
  const auto seed = editing->inputs.empty() ? std::nullopt : std::optional(editing->inputs.front().url);
  workbench_ = child<WorkbenchPage>(
      pages_, *tool, seed, session_.outputDirectory(), banners_,
      WorkbenchPage::Callbacks{
          .onComplete = [this](std::vector<OutputFile> outputs) { session_.completeEditing(std::move(outputs)); },
          .onCancel = [this] { session_.cancelEditing(); }});
  pages_->addWidget(workbench_);
  pages_->setCurrentWidget(workbench_);
  slideIn(workbench_);
}

void MainWindow::comeToFront(const std::string& activationToken) {
  // Where Wayland's plugin looks for it.
  if (!activationToken.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

// --- ways in --------------------------------------------------------------------------------------

void MainWindow::addFiles() {
  auto* const dialog = std::make_unique<QFileDialog>(this, "Add Files").release();  // which deletes itself when closed
  dialog->setFileMode(QFileDialog::ExistingFiles);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QFileDialog::urlsSelected, this, [this](const QList<QUrl>& urls) {
    Paths files;
    for (const QUrl& url : urls) files.push_back(pathOf(url));
    session_.ingest(files);
  });
  dialog->open();
}

void MainWindow::chooseOutputFolder() {
  auto* const dialog = std::make_unique<QFileDialog>(this, "Choose the Folder for Outputs").release();
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QFileDialog::urlSelected, this, [this](const QUrl& url) {
    const std::filesystem::path folder = pathOf(url);
    if (folder.empty()) return;
    session_.chooseOutputDirectory(folder);
    banners_.post(BannerStyle::info, session_.outputDirectoryLine());
  });
  dialog->open();
}

void MainWindow::paste() {
  events_.post(notifications::paste);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->source() != nullptr || filesIn(event->mimeData()).empty()) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  files_->setDropTarget(true);
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent*) {
  files_->setDropTarget(false);
}

void MainWindow::dropEvent(QDropEvent* event) {
  files_->setDropTarget(false);
  event->setDropAction(Qt::CopyAction);
  event->accept();
  session_.ingest(filesIn(event->mimeData()));
}

// --- the end --------------------------------------------------------------------------------------

void MainWindow::closeEvent(QCloseEvent* event) {
  if (session_.isActive()) {
    event->ignore();
    if (!isClosing_) askBeforeClosing();
    return;
  }
  event->accept();
  if (whenClosed) whenClosed();
}

void MainWindow::askBeforeClosing() {
  auto* const question = std::make_unique<QMessageBox>(this).release();  // which deletes itself when it is closed
  question->setObjectName("closeQuestion");
  question->setAttribute(Qt::WA_DeleteOnClose);
  question->setIcon(QMessageBox::Question);
  question->setWindowTitle("Quirn");
  question->setText(toQt(session_.activeName()) + " is still running.");
  question->setInformativeText("Closing the window stops it. Files that are finished stay where they are.");
  QPushButton* const stop = question->addButton("Stop and Close", QMessageBox::AcceptRole);
  question->setDefaultButton(question->addButton("Keep Running", QMessageBox::RejectRole));
  connect(question, &QMessageBox::buttonClicked, this, [this, stop](QAbstractButton* clicked) {
    if (clicked != stop) return;
    isClosing_ = true;
    session_.cancelRun();
    if (!session_.isActive()) close();
  });
  question->open();
}

}  // namespace quirn::window
