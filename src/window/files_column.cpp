// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/files_column.h"

#include <QAction>
#include <QMenu>
#include <utility>

#include "core/byte_count.h"
#include "window/child.h"
#include "window/clipboard.h"
#include "window/drop_area.h"
#include "window/file_actions.h"
#include "window/icon.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

QString countText(std::size_t count) {
  return count == 1 ? QString("1 file") : QString("%L1 files").arg(count);
}

QString inputCountText(std::span<const InputFile> inputs) {
  std::int64_t bytes = 0;
  for (const InputFile& input : inputs) bytes += input.size;
  return countText(inputs.size()) + " · " + toQt(byteCountText(bytes));
}

RowList* fileList(QWidget* parent, QAbstractItemModel* model, const QString& name) {
  auto* const list = child<RowList>(parent, RowList::Activation::byDoubleClick, RowDelegate::Density::compact);
  list->setModel(model);
  list->setAccessibleName(name);
  list->setUniformItemSizes(true);  // with thousands of rows, they are not measured one by one
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setContextMenuPolicy(Qt::CustomContextMenu);
  return list;
}

struct Head {
  QHBoxLayout* layout = nullptr;
  QLabel* count = nullptr;
};

Head cardHead(QWidget* card, QVBoxLayout* layout, const QString& title) {
  auto* const head = layoutIn<QHBoxLayout>(layout, 4);
  head->setContentsMargins(16, 10, 8, 8);
  head->addWidget(label(card, title, 1.05, Weight::strong));
  head->addSpacing(6);
  QLabel* const count = quietLabel(card);
  head->addWidget(count);
  head->addStretch();
  return {head, count};
}

}  // namespace

FilesColumn::FilesColumn(WorkspaceSession& session, Commands commands, QWidget* parent)
    : QWidget(parent), session_(session), commands_(std::move(commands)) {
  inputModel_ = child<InputModel>(static_cast<QObject*>(this), session);
  outputModel_ = child<OutputModel>(static_cast<QObject*>(this), session);
  auto* const layout = layoutOf<QVBoxLayout>(this, 14);
  inputCard_ = child<Card>(this);
  Card* const card = inputCard_;
  auto* const inside = layoutOf<QVBoxLayout>(card, 0, {1, 1, 1, 1});
  stack_ = child<QStackedWidget>(card);
  stack_->addWidget(makeEmpty());
  stack_->addWidget(makeInputs());
  inside->addWidget(stack_, 1);
  progress_ = child<ProgressCard>(card, session);
  inside->addWidget(progress_);
  inside->addWidget(separator(card));
  inside->addWidget(makeFolderLine());
  layout->addWidget(card, 3);
  outputCard_ = makeOutputs();
  layout->addWidget(outputCard_, 2);
  sync();
}

QWidget* FilesColumn::makeEmpty() {
  return child<DropArea>(stack_, commands_.addFiles, commands_.paste);
}

QWidget* FilesColumn::makeInputs() {
  auto* const page = child<QWidget>(stack_);
  auto* const layout = layoutOf<QVBoxLayout>(page);
  const auto [head, count] = cardHead(page, layout, "Files");
  inputCount_ = count;
  QPushButton* const add = quietButton(page, "plus", "Add files (Ctrl+O)");
  connect(add, &QPushButton::clicked, this, commands_.addFiles);
  QPushButton* const clear = quietButton(page, "trash", "Clear dropped files");
  clear->setObjectName("clearFiles");
  connect(clear, &QPushButton::clicked, this, [this] { session_.clear(); });
  head->addWidget(add);
  head->addWidget(clear);
  inputs_ = fileList(page, inputModel_, "Files");
  inputs_->setObjectName("inputs");
  inputs_->onActivate = [this](const QModelIndex& index) { openFiles({inputModel_->file(index).url}); };
  inputs_->onDelete = [this] { removeSelected(); };
  connect(inputs_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { inputMenu(at); });
  layout->addWidget(inputs_, 1);
  return page;
}

QWidget* FilesColumn::makeOutputs() {
  auto* const card = child<Card>(this);
  auto* const layout = layoutOf<QVBoxLayout>(card, 0, {1, 1, 1, 6});
  const auto [head, count] = cardHead(card, layout, "Results");
  outputCount_ = count;
  QPushButton* const show = quietButton(card, "folder", "Show in folder");
  connect(show, &QPushButton::clicked, this, [this] { showInFolder(chosenOutputs()); });
  head->addWidget(show);
  QPushButton* const use = button(card, "next", "Use as Input");
  use->setObjectName("useAsInput");
  use->setToolTip("Go on with these files: the selected ones, or all");
  connect(use, &QPushButton::clicked, this, [this] { session_.replaceInputs(chosenOutputs()); });
  head->addWidget(use);
  outputs_ = fileList(card, outputModel_, "Results");
  outputs_->setObjectName("outputs");
  outputs_->setDragEnabled(true);
  outputs_->onActivate = [this](const QModelIndex& index) { openFiles({outputModel_->path(index)}); };
  outputs_->onDrag = [this] { return mimeDataOf(chosenOutputs()).release(); };  // which the drag owns
  connect(outputs_, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) { outputMenu(at); });
  layout->addWidget(outputs_, 1);
  return card;
}

QWidget* FilesColumn::makeFolderLine() {
  auto* const row = child<QWidget>(this);
  auto* const layout = layoutOf<QHBoxLayout>(row, 6, {16, 6, 8, 6});
  auto* const picture = child<QLabel>(row);
  picture->setPixmap(icon("folder").pixmap(QSize(18, 18), devicePixelRatioF()));
  layout->addWidget(picture);
  folderLine_ = child<ElidedLabel>(row);
  folderLine_->setObjectName("folderLine");
  folderLine_->setForegroundRole(QPalette::PlaceholderText);
  layout->addWidget(folderLine_, 1);
  resetFolder_ = quietTextButton(row, "return", "Next to original files");
  resetFolder_->setObjectName("resetFolder");
  connect(resetFolder_, &QPushButton::clicked, this, [this] { session_.resetOutputDirectory(); });
  layout->addWidget(resetFolder_);
  QPushButton* const choose = quietTextButton(row, {}, "Choose…");
  choose->setAccessibleName("Choose the folder for outputs");
  connect(choose, &QPushButton::clicked, this, commands_.chooseOutputFolder);
  layout->addWidget(choose);
  return row;
}

void FilesColumn::sync() {
  inputModel_->sync();
  outputModel_->sync();
  stack_->setCurrentIndex(session_.inputs().empty() ? 0 : 1);
  inputCount_->setText(inputCountText(session_.inputs()));
  outputCard_->setVisible(!session_.outputs().empty());
  outputCount_->setText(countText(session_.outputs().size()));
  progress_->sync();
  const QString line = shownName(session_.outputDirectoryLine());
  folderLine_->setText(line);
  folderLine_->setToolTip(line);
  resetFolder_->setVisible(session_.outputDirectory().has_value());
}

void FilesColumn::setDropTarget(bool isTarget) {
  inputCard_->setTarget(isTarget);
}

void FilesColumn::removeSelected() {
  std::vector<platform::Uuid> ids;
  for (const QModelIndex& index : inputs_->selectionModel()->selectedIndexes())
    ids.push_back(inputModel_->file(index).id);
  session_.remove(ids);
}

void FilesColumn::inputMenu(const QPoint& at) {
  if (!inputs_->indexAt(at).isValid()) return;
  Paths files;
  for (const QModelIndex& index : inputs_->selectionModel()->selectedIndexes())
    files.push_back(inputModel_->file(index).url);
  QMenu menu(this);
  menu.addAction(icon("open"), "Open", this, [files] { openFiles(files); });
  menu.addAction(icon("folder"), "Show in folder", this, [files] { showInFolder(files); });
  menu.addAction(icon("copy"), "Copy", this, [files] { Clipboard::setFiles(files); });
  menu.addSeparator();
  menu.addAction(icon("close"), "Remove from list", this, [this] { removeSelected(); });
  menu.exec(inputs_->viewport()->mapToGlobal(at));
}

Paths FilesColumn::chosenOutputs() const {
  const auto selected = outputs_->selectionModel()->selectedIndexes();
  Paths files;
  for (const QModelIndex& index : selected) files.push_back(outputModel_->path(index));
  if (!files.empty()) return files;
  for (const OutputFile& output : session_.outputs()) files.push_back(output.url);
  return files;
}

void FilesColumn::outputMenu(const QPoint& at) {
  if (!outputs_->indexAt(at).isValid()) return;
  const Paths files = chosenOutputs();
  QMenu menu(this);
  menu.addAction(icon("open"), "Open", this, [files] { openFiles(files); });
  menu.addAction(icon("folder"), "Show in folder", this, [files] { showInFolder(files); });
  menu.addAction(icon("copy"), "Copy", this, [files] { Clipboard::setFiles(files); });
  menu.addSeparator();
  menu.addAction(icon("next"), "Use as Input", this, [this, files] { session_.replaceInputs(files); });
  menu.exec(outputs_->viewport()->mapToGlobal(at));
}

}  // namespace quirn::window
