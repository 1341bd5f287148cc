// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/workbench_page.h"

#include <QFontDatabase>
#include <QShortcut>
#include <QSplitter>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "platform/text.h"
#include "shell/command_text.h"
#include "window/child.h"
#include "window/clipboard.h"
#include "window/colors.h"
#include "window/control_widget.h"
#include "window/flow_layout.h"
#include "window/icon.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

// A text of this length is laid out without a wait that is felt; Copy and Save have all of it.
constexpr std::size_t mostShown = 1 << 20;

QPlainTextEdit* textPane(QWidget* parent, const QString& name) {
  auto* const edit = child<QPlainTextEdit>(parent);
  edit->setFrameShape(QFrame::NoFrame);
  edit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  edit->setAccessibleName(name);
  edit->setTabChangesFocus(true);
  edit->document()->setDocumentMargin(14);
  edit->viewport()->setAutoFillBackground(false);
  return edit;
}

struct Pane {
  Card* card = nullptr;
  QHBoxLayout* head = nullptr;
};

Pane pane(QWidget* parent, const QString& title) {
  auto* const card = child<Card>(parent);
  auto* const layout = layoutOf<QVBoxLayout>(card, 0, {1, 1, 1, 1});
  auto* const head = layoutIn<QHBoxLayout>(layout, 2);
  head->setContentsMargins(14, 8, 8, 8);
  head->addWidget(label(card, title, 1, Weight::strong));
  layout->addWidget(separator(card));
  return {card, head};
}

}  // namespace

std::filesystem::path WorkbenchPage::offeredFolder() {
  for (const auto place : {QStandardPaths::DocumentsLocation, QStandardPaths::HomeLocation}) {
    const std::filesystem::path folder = fromQt(QStandardPaths::writableLocation(place));
    if (std::error_code error; std::filesystem::is_directory(folder, error)) return folder;
  }
  return std::filesystem::temp_directory_path();
}

WorkbenchPage::WorkbenchPage(const TextTool& tool, std::optional<std::filesystem::path> seed,
                             const std::optional<std::filesystem::path>& outputDirectory, BannerCenter& banners,
                             Callbacks callbacks, QWidget* parent)
    : QWidget(parent),
      workbench_(tool, seed, outputDirectory),
      seed_(std::move(seed)),
      banners_(banners),
      callbacks_(std::move(callbacks)) {
  setObjectName("workbench");
  setAccessibleName(toQt(tool.name));
  auto* const layout = layoutOf<QVBoxLayout>(this, 14);
  layout->addWidget(makeHead());
  if (!tool.controls.empty()) layout->addWidget(makeControls());
  auto* const splitter = child<QSplitter>(this, Qt::Horizontal);
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(14);
  if (!tool.isGenerator) splitter->addWidget(makeInputPane());
  splitter->addWidget(makeOutputPane());
  splitter->setSizes(QList<int>(splitter->count(), 1000));
  layout->addWidget(splitter, 1);
  auto* const escape = child<QShortcut>(this, QKeySequence(Qt::Key_Escape));
  escape->setContext(Qt::WidgetWithChildrenShortcut);
  connect(escape, &QShortcut::activated, this, [this] { callbacks_.onCancel(); });
  showInput();
  showOutput();
  (input_ == nullptr ? output_ : input_)->setFocus();
}

QWidget* WorkbenchPage::makeHead() {
  const TextTool& tool = workbench_.tool();
  auto* const head = child<QWidget>(this);
  auto* const layout = layoutOf<QHBoxLayout>(head, 12);
  QPushButton* const back = quietButton(head, "chevron-left", "Close the tool");
  back->setObjectName("closeTool");
  connect(back, &QPushButton::clicked, this, [this] { callbacks_.onCancel(); });
  layout->addWidget(back);
  auto* const tile = child<QLabel>(head);
  tile->setPixmap(operationTile(
      {.operationID = tool.id, .displayName = tool.name, .iconName = tool.icon, .category = tool.category}, 38,
      palette(), devicePixelRatioF()));
  layout->addWidget(tile);
  auto* const words = layoutIn<QVBoxLayout>(layout, 0);
  words->addWidget(label(head, toQt(tool.name), 1.15, Weight::strong));
  words->addWidget(quietLabel(head, toQt(tool.blurb)));
  layout->addStretch();
  QPushButton* const copy = quietTextButton(head, "terminal", "Copy as Command");
  copy->setObjectName("copyAsCommand");
  connect(copy, &QPushButton::clicked, this, [this] {
    Clipboard::setText(toQt(toolCommandText(workbench_.tool(), workbench_.options(), seed_)));
    banners_.post(BannerStyle::info, "Copied to clipboard.");
  });
  layout->addWidget(copy);
  return head;
}

QWidget* WorkbenchPage::makeControls() {
  auto* const row = child<QWidget>(this);
  auto* const flow = child<FlowLayout>(row, 22, 10);
  flow->setContentsMargins(0, 0, 0, 0);
  for (const TextToolControl& each : workbench_.tool().controls) {
    const Control control = panelControl(each);
    auto* const group = child<QWidget>(row);
    auto* const layout = layoutOf<QHBoxLayout>(group, 8);
    QWidget* const widget = controlWidget(group, control, workbench_.options().text(control.key, ""),
                                          {.set =
                                               [this, key = control.key](const std::string& text) {
                                                 workbench_.setOption(key, text);
                                                 showOutput();
                                               },
                                           .refuse = {}});
    if (control.kind == Control::Kind::field) widget->setMinimumWidth(190);
    if (!showsOwnLabel(control)) {
      QLabel* const name = quietLabel(group, toQt(control.label));
      name->setBuddy(widget);
      layout->addWidget(name);
    }
    layout->addWidget(widget);
    flow->addWidget(group);
  }
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  row->setSizePolicy(policy);
  return row;
}

QWidget* WorkbenchPage::makeInputPane() {
  const auto [card, head] = pane(this, "Input");
  inputCount_ = quietLabel(card);
  head->addSpacing(6);
  head->addWidget(inputCount_);
  head->addStretch();
  QPushButton* const clear = quietTextButton(card, "close", "Clear");
  QPushButton* const paste = quietTextButton(card, "paste", "Paste");
  QPushButton* const sample = quietTextButton(card, "sample", "Sample");
  sample->setToolTip("Load a sample");
  for (QPushButton* const each : {clear, paste, sample}) head->addWidget(each);
  input_ = textPane(card, "Input");
  input_->setObjectName("input");
  input_->setPlaceholderText(toQt(workbench_.tool().inputPlaceholder));
  card->layout()->addWidget(input_);
  connect(clear, &QPushButton::clicked, input_, &QPlainTextEdit::clear);
  connect(paste, &QPushButton::clicked, this, [this] { input_->setPlainText(Clipboard::text()); });
  connect(sample, &QPushButton::clicked, this, [this] { input_->setPlainText(toQt(workbench_.tool().sampleInput)); });
  connect(input_, &QPlainTextEdit::textChanged, this, [this] {
    workbench_.setInput(fromQt(input_->toPlainText()));
    inputCount_->setText(toQt(workbench_.inputLineCount()));
    showOutput();
  });
  return card;
}

QWidget* WorkbenchPage::makeOutputPane() {
  const auto [card, head] = pane(this, "Output");
  outputCount_ = quietLabel(card);
  head->addSpacing(6);
  head->addWidget(outputCount_);
  head->addStretch();
  if (workbench_.tool().isGenerator) {
    QPushButton* const again = quietTextButton(card, "refresh", "Regenerate");
    again->setShortcut(QKeySequence(QKeySequence::Refresh));
    connect(again, &QPushButton::clicked, this, [this] {
      workbench_.regenerate();
      showOutput();
    });
    head->addWidget(again);
  }
  copy_ = quietTextButton(card, "copy", "Copy");
  copy_->setToolTip("Copy output");
  connect(copy_, &QPushButton::clicked, this, [this] { copyOutput(); });
  head->addWidget(copy_);
  save_ = quietTextButton(card, "save", "Save File");
  save_->setToolTip("Save the output as a file (Ctrl+S)");
  save_->setShortcut(QKeySequence(QKeySequence::Save));
  connect(save_, &QPushButton::clicked, this, [this] { save(); });
  head->addWidget(save_);
  error_ = label(card, {});
  error_->setObjectName("error");
  error_->setWordWrap(true);
  error_->setContentsMargins(16, 14, 16, 0);
  card->layout()->addWidget(error_);
  output_ = textPane(card, "Output");
  output_->setObjectName("output");
  output_->setReadOnly(true);
  output_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  card->layout()->addWidget(output_);
  return card;
}

void WorkbenchPage::showInput() {
  if (input_ == nullptr) return;
  const QSignalBlocker blocker(input_);
  input_->setPlainText(toQt(workbench_.input()));
  inputCount_->setText(toQt(workbench_.inputLineCount()));
}

void WorkbenchPage::showOutput() {
  const std::string& text = workbench_.output();
  const bool isCut = text.size() > mostShown;
  output_->setPlainText(toQt(platform::utf8Prefix(text, mostShown)));
  const QString count = toQt(workbench_.outputLineCount());
  outputCount_->setText(isCut ? count + ", the first megabyte shown" : count);
  const auto& message = workbench_.errorMessage();
  QPalette red = palette();
  red.setColor(QPalette::WindowText, Colors(palette()).danger);
  error_->setPalette(red);
  error_->setText(message ? toQt(*message) : QString());
  error_->setVisible(message.has_value());
  copy_->setEnabled(!text.empty());
  save_->setEnabled(!text.empty());
}

void WorkbenchPage::copyOutput() {
  Clipboard::setText(toQt(workbench_.output()));
  banners_.post(BannerStyle::info, "Copied to clipboard.");
}

void WorkbenchPage::save() {
  try {
    callbacks_.onComplete({workbench_.save(offeredFolder())});
  } catch (const TextToolError& error) {
    banners_.post(BannerStyle::error, error.message());
  }
}

}  // namespace quirn::window
