// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/operations_page.h"

#include <utility>

#include "window/child.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {

OperationsPage::OperationsPage(WorkspaceSession& session, const OperationRegistry& registry,
                               const std::function<void()>& openPalette, QWidget* parent)
    : QWidget(parent), session_(session), registry_(registry) {
  auto* const layout = layoutOf<QVBoxLayout>(this, 0, {1, 1, 1, 6});
  auto* const head = layoutIn<QHBoxLayout>(layout, 4);
  head->setContentsMargins(16, 10, 8, 4);
  title_ = label(this, {}, 1.05, Weight::strong);
  head->addWidget(title_, 1);
  QPushButton* const search = quietTextButton(this, "search", "Search all");
  search->setToolTip("Find any operation (Ctrl+K)");
  connect(search, &QPushButton::clicked, this, openPalette);
  head->addWidget(search);
  model_ = child<OperationModel>(static_cast<QObject*>(this));
  list_ = child<RowList>(this, RowList::Activation::byClick, RowDelegate::Density::roomy);
  list_->setObjectName("operations");
  list_->setModel(model_);
  list_->onActivate = [this](const QModelIndex& index) {
    if (const OperationType* const type = model_->operation(index)) session_.attemptRun(*type, session_.inputs());
  };
  layout->addWidget(list_, 1);
  nothing_ = quietLabel(this, "No operations match these files");
  nothing_->setObjectName("noOperations");
  nothing_->setAlignment(Qt::AlignCenter);
  layout->addWidget(nothing_, 1);
  sync();
}

std::vector<const OperationType*> OperationsPage::fitting() const {
  return session_.inputs().empty() ? registry_.suggestions({}) : session_.suggestions();
}

void OperationsPage::sync() {
  title_->setText(session_.inputs().empty() ? "Without files" : "Suggested operations");
  list_->setAccessibleName(title_->text());
  auto types = fitting();
  if (types != shown_) {
    shown_ = std::move(types);
    model_->showByFamily(shown_);
    list_->scrollToTop();
  }
  list_->setVisible(!shown_.empty());
  nothing_->setVisible(shown_.empty());
}

}  // namespace quirn::window
