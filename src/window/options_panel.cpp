// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/options_panel.h"

#include <fmt/format.h>

#include <QShortcut>

#include "shell/command_text.h"
#include "window/child.h"
#include "window/clipboard.h"
#include "window/control_widget.h"
#include "window/icon.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

QString inputsLine(std::span<const InputFile> inputs) {
  if (inputs.empty()) return "Needs no files";
  if (inputs.size() == 1) return "On " + shownName(inputs.front().fileName());
  return QString("On %L1 files").arg(inputs.size());
}

}  // namespace

OptionsPanel::OptionsPanel(WorkspaceSession& session, BannerCenter& banners, QWidget* parent)
    : QWidget(parent), session_(session), banners_(banners) {
  setObjectName("options");
  setAccessibleName("Options");
  makeFrame();
  auto* const escape = child<QShortcut>(this, QKeySequence(Qt::Key_Escape));
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  connect(escape, &QShortcut::activated, this, [this] { session_.closePanel(); });
}

void OptionsPanel::makeFrame() {
  auto* const layout = layoutOf<QVBoxLayout>(this);
  auto* const head = layoutIn<QHBoxLayout>(layout, 12);
  head->setContentsMargins(12, 14, 16, 12);
  QPushButton* const back = quietButton(this, "chevron-left", "Back to the operations");
  connect(back, &QPushButton::clicked, this, [this] { session_.closePanel(); });
  head->addWidget(back, 0, Qt::AlignTop);
  tile_ = child<QLabel>(this);
  head->addWidget(tile_, 0, Qt::AlignTop);
  auto* const words = layoutIn<QVBoxLayout>(head, 2);
  title_ = label(this, {}, 1.15, Weight::strong);
  title_->setWordWrap(true);
  about_ = quietLabel(this);
  about_->setWordWrap(true);
  words->addWidget(title_);
  words->addWidget(about_);
  head->setStretch(2, 1);
  layout->addWidget(separator(this));

  scroll_ = child<QScrollArea>(this);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->viewport()->setAutoFillBackground(false);
  layout->addWidget(scroll_, 1);

  layout->addWidget(separator(this));
  auto* const foot = layoutIn<QHBoxLayout>(layout, 8);
  foot->setContentsMargins(12, 12, 16, 14);
  QPushButton* const copy = quietTextButton(this, "terminal", "Copy as Command");
  copy->setToolTip("Copy the command line that does the same");
  copy->setObjectName("copyAsCommand");
  connect(copy, &QPushButton::clicked, this, [this] { copyCommand(); });
  foot->addWidget(copy);
  foot->addStretch();
  inputs_ = quietLabel(this);
  foot->addWidget(inputs_);
  run_ = button(this, {}, "Run");
  run_->setObjectName("run");
  run_->setDefault(true);
  run_->setAutoDefault(true);
  run_->setMinimumWidth(96);
  run_->setToolTip("Run (Ctrl+Return)");
  run_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return));
  connect(run_, &QPushButton::clicked, this, [this] { session_.runConfigured(); });
  foot->addWidget(run_);
}

bool OptionsPanel::sync() {
  const ConfiguringOperation* const open = session_.configuring();
  if (open == nullptr || open->id == shown_) return false;
  shown_ = open->id;
  fill(*open);
  return true;
}

void OptionsPanel::fill(const ConfiguringOperation& open) {
  const OperationInfo& info = open.opType->info();
  tile_->setPixmap(operationTile(info, 40, palette(), devicePixelRatioF()));
  title_->setText(toQt(info.displayName));
  about_->setText(toQt(info.about));
  inputs_->setText(inputsLine(open.inputs));
  panel_ = open.opType->configPanel(*open.config);
  rows_.clear();
  auto* const form = std::make_unique<QWidget>().release();  // which the scroll area owns
  form_ = form;
  formLayout_ = layoutOf<QVBoxLayout>(form, 14, {20, 16, 20, 16});
  for (const Panel::Item& item : panel_.items()) {
    if (const auto* const control = std::get_if<Control>(&item)) {
      addControl(*control, open);
    } else if (const auto* const fact = std::get_if<Fact>(&item)) {
      formLayout_->addWidget(label(form, toQt(fact->text(*open.config))));
    } else {
      const Note& note = std::get<Note>(item);
      addNote(toQt(note.text), note.isShown);
    }
  }
  formLayout_->addStretch();
  scroll_->setWidget(form);
  form->setAutoFillBackground(false);  // which the scroll area has just set
  update();
  run_->setFocus();  // so that Return runs at once
}

void OptionsPanel::addNote(const QString& text, std::function<bool(const OperationConfig&)> isShown) {
  QLabel* const note = quietLabel(form_, text);
  note->setWordWrap(true);
  formLayout_->addWidget(note);
  rows_.push_back({.key = "", .isShown = std::move(isShown), .widget = note});
}

void OptionsPanel::addControl(const Control& control, const ConfiguringOperation& open) {
  auto* const group = child<QWidget>(form_);
  auto* const layout = layoutOf<QVBoxLayout>(group, 6);
  QWidget* const widget = controlWidget(group, control, control.read(*open.config),
                                        {.set = [this, key = control.key](const auto& text) { set(key, text); },
                                         .refuse = [this, key = control.key](const auto& why) { refuse(key, why); }});
  if (!showsOwnLabel(control)) {
    QLabel* const name = label(group, toQt(control.label), 1, Weight::strong);
    name->setBuddy(widget);
    layout->addWidget(name);
  }
  layout->addWidget(widget);
  QLabel* const refusal = label(group, {}, 0.94);
  refusal->setWordWrap(true);
  refusal->hide();
  layout->addWidget(refusal);
  formLayout_->addWidget(group);
  rows_.push_back({control.key, control.isShown, group, refusal});
}

void OptionsPanel::set(const std::string& key, const std::string& text) {
  const ConfiguringOperation* const open = session_.configuring();
  if (open == nullptr) return;
  try {
    panel_.set(*open->config, key, text);
    refuse(key, "");
  } catch (const SettingError& error) {
    refuse(key, error.what());
  }
}

// Nothing to say clears what was said.
void OptionsPanel::refuse(const std::string& key, const std::string& sentence) {
  std::ranges::find(rows_, key, &Row::key)->refusal->setText(toQt(sentence));
  update();
}

void OptionsPanel::update() {
  const ConfiguringOperation* const open = session_.configuring();
  if (open == nullptr) return;
  bool isAccepted = true;
  for (const Row& row : rows_) {
    const bool isShown = !row.isShown || row.isShown(*open->config);
    row.widget->setVisible(isShown);
    if (row.refusal == nullptr) continue;
    const bool isRefused = !row.refusal->text().isEmpty();
    row.refusal->setVisible(isRefused);
    isAccepted = isAccepted && !(isShown && isRefused);
  }
  run_->setEnabled(isAccepted);
}

void OptionsPanel::copyCommand() const {
  const ConfiguringOperation* const open = session_.configuring();
  if (open == nullptr) return;
  Clipboard::setText(toQt(runCommandText(*open->opType, open->config.get(), open->inputs, session_.outputDirectory())));
  banners_.post(BannerStyle::info, "Copied to clipboard.");
}

}  // namespace quirn::window
