// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/command_palette.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "window/child.h"
#include "window/colors.h"
#include "window/icon.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {

CommandPalette::CommandPalette(WorkspaceSession& session, const OperationRegistry& registry, QWidget* parent)
    : QWidget(parent), session_(session), registry_(registry) {
  setObjectName("palette");
  setAccessibleName("Search operations");
  auto* const card = child<Card>(this);
  card_ = card;
  auto* const layout = layoutOf<QVBoxLayout>(card, 0, {1, 1, 1, 8});
  auto* const head = layoutIn<QHBoxLayout>(layout, 8);
  head->setContentsMargins(16, 10, 12, 10);
  auto* const lens = child<QLabel>(card);
  lens->setPixmap(icon("search").pixmap(QSize(20, 20), devicePixelRatioF()));
  head->addWidget(lens);
  field_ = child<QLineEdit>(card);
  field_->setObjectName("paletteField");
  field_->setFrame(false);
  field_->setAccessibleName("Search operations");
  field_->setPlaceholderText("What would you like to do?");
  QFont large = field_->font();
  large.setPointSizeF(large.pointSizeF() * 1.2);
  field_->setFont(large);
  head->addWidget(field_, 1);
  layout->addWidget(separator(card));
  model_ = child<OperationModel>(static_cast<QObject*>(this));
  list_ = child<RowList>(card, RowList::Activation::byClick, RowDelegate::Density::compact);
  list_->setObjectName("paletteList");
  list_->setAccessibleName("Operations found");
  list_->setModel(model_);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->onActivate = [this](const QModelIndex& index) { choose(index); };
  layout->addSpacing(6);
  layout->addWidget(list_, 1);
  QLabel* const nothing = quietLabel(card, "No operation is called anything like that.");
  nothing->setAlignment(Qt::AlignCenter);
  nothing_ = nothing;
  layout->addWidget(nothing, 1);
  connect(field_, &QLineEdit::textChanged, this, [this] { find(); });
  field_->installEventFilter(this);
  parent->installEventFilter(this);
  hide();
}

const OperationSearch& CommandPalette::search() {
  if (!search_) search_.emplace(registry_);
  return *search_;
}

void CommandPalette::open() {
  if (isVisible()) return;
  focusBefore_ = window()->focusWidget();
  place();
  field_->clear();
  find();
  show();
  raise();
  field_->setFocus();
}

void CommandPalette::close() {
  hide();
  if (focusBefore_ != nullptr) focusBefore_->setFocus();
}

void CommandPalette::find() {
  model_->showFound(search().find(fromQt(field_->text()), session_.inputs()), session_.inputs());
  const bool isEmpty = model_->rowCount({}) == 0;
  list_->setVisible(!isEmpty);
  nothing_->setVisible(isEmpty);
  if (!isEmpty) list_->setCurrentIndex(model_->index(0));
  place();
}

void CommandPalette::step(int rows) {
  if (model_->rowCount({}) == 0) return;
  const int row = std::clamp(list_->currentIndex().row() + rows, 0, model_->rowCount({}) - 1);
  list_->setCurrentIndex(model_->index(row));
}

void CommandPalette::choose(const QModelIndex& index) {
  const OperationType* const type = model_->operation(index);
  if (type == nullptr) return;
  close();
  // What is open gives way to what was chosen, as a click on a suggestion would.
  if (session_.configuring() != nullptr) session_.closePanel();
  if (session_.editing() != nullptr) session_.cancelEditing();
  session_.attemptRun(*type, session_.inputs());
}

void CommandPalette::place() {
  setGeometry(parentWidget()->rect());
  const int width = std::min(parentWidget()->width() - 48, 640);
  // As high as what was found, so that little of the window is covered.
  const int rows = std::max(model_->rowCount({}), 2);
  const int rowHeight = rows > 0 && model_->rowCount({}) > 0 ? list_->sizeHintForRow(0) : 40;
  const int height =
      std::min({parentWidget()->height() - 96, 560, field_->sizeHint().height() + 42 + rows * rowHeight});
  card_->setGeometry((parentWidget()->width() - width) / 2, 56, width, height);
}

bool CommandPalette::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) place();
  if (watched != field_) return QWidget::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut && isVisible() && window()->isActiveWindow()) {
    // Tab leads out of the field to what lies beneath, which is not to be reached now.
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) close();
  }
  if (event->type() != QEvent::KeyPress) return false;
  constexpr int page = 8;
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Down: step(1); return true;
    case Qt::Key_Up: step(-1); return true;
    case Qt::Key_PageDown: step(page); return true;
    case Qt::Key_PageUp: step(-page); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: choose(list_->currentIndex()); return true;
    case Qt::Key_Escape: close(); return true;
    default: return false;
  }
}

void CommandPalette::mousePressEvent(QMouseEvent*) {
  close();
}

void CommandPalette::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), QColor(0, 0, 0, Colors(palette()).scheme == Scheme::dark ? 130 : 70));
}

}  // namespace quirn::window
