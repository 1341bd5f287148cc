// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/progress_card.h"

#include <chrono>
#include <cmath>

#include "window/child.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

constexpr int barSteps = 1000;

}  // namespace

ProgressCard::ProgressCard(WorkspaceSession& session, QWidget* parent) : QWidget(parent), session_(session) {
  setObjectName("progress");
  auto* const frame = layoutOf<QVBoxLayout>(this);
  frame->addWidget(separator(this));
  auto* const outer = layoutIn<QVBoxLayout>(frame, 8);
  outer->setContentsMargins(16, 12, 12, 14);
  auto* const head = layoutIn<QHBoxLayout>(outer, 10);
  auto* const words = layoutIn<QVBoxLayout>(head, 1);
  name_ = label(this, {}, 1, Weight::strong);
  status_ = child<ElidedLabel>(this);
  status_->setTextFormat(Qt::PlainText);
  status_->setForegroundRole(QPalette::PlaceholderText);
  words->addWidget(name_);
  words->addWidget(status_);
  head->setStretch(0, 1);
  cancel_ = button(this, {}, "Cancel");
  cancel_->setObjectName("cancelRun");
  cancel_->setToolTip("Stop the run");
  head->addWidget(cancel_);
  bar_ = child<QProgressBar>(this);
  bar_->setRange(0, barSteps);
  bar_->setTextVisible(false);
  bar_->setFixedHeight(8);
  bar_->setAccessibleName("Progress of the run");
  outer->addWidget(bar_);
  connect(cancel_, &QPushButton::clicked, this, [this] {
    cancel_->setEnabled(false);
    session_.cancelRun();
  });
  statusTimer_.setInterval(std::chrono::milliseconds(100));
  connect(&statusTimer_, &QTimer::timeout, this, [this] { showStatus(); });
  hide();
}

void ProgressCard::sync() {
  if (session_.isActive() == statusTimer_.isActive()) return;
  setVisible(session_.isActive());
  if (!session_.isActive()) {
    statusTimer_.stop();
    subscription_.reset();
    return;
  }
  name_->setText(toQt(session_.activeName()));
  cancel_->setEnabled(true);
  bar_->setValue(0);
  statusTimer_.start();
  showStatus();
  subscription_ = session_.progress()->changed().subscribe([this] {
    if (const auto progress = session_.progress())
      bar_->setValue(static_cast<int>(std::lround(progress->fraction() * barSteps)));
  });
}

void ProgressCard::showStatus() {
  const std::string status = session_.activeStatus();
  status_->setText(status.empty() ? QString("Working…") : shownName(status));
}

}  // namespace quirn::window
