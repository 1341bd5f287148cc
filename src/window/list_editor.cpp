// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/list_editor.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/json.h"
#include "window/child.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

using platform::JsonArray;
using platform::JsonObject;
using platform::JsonValue;

QString textOf(const JsonValue* value) {
  return value != nullptr && value->string() != nullptr ? toQt(*value->string()) : QString();
}

int numberOf(const JsonValue* value) {
  return value != nullptr && value->number() != nullptr ? std::atoi(value->number()->text.c_str()) : 1;
}

}  // namespace

ListEditor::ListEditor(const Control& control, const std::string& value,
                       std::function<void(const std::string&)> whenSet, QWidget* parent)
    : QWidget(parent), texts_(control.texts), placeholder_(toQt(control.placeholder)), whenSet_(std::move(whenSet)) {
  auto* const layout = layoutOf<QVBoxLayout>(this, 8);
  empty_ = quietLabel(this, toQt(texts_.empty));
  layout->addWidget(empty_);
  rowsLayout_ = layoutIn<QVBoxLayout>(layout, 6);
  const JsonValue list = platform::parsedJson(value.empty() ? "[]" : value);
  if (const JsonArray* const items = list.array()) {
    for (const JsonValue& item : *items)
      addRow(textOf(item.find(texts_.textKey)), numberOf(item.find(texts_.numberKey)));
  }
  QPushButton* const add = button(this, "plus", toQt(texts_.add));
  layout->addWidget(add, 0, Qt::AlignLeft);
  connect(add, &QPushButton::clicked, this, [this] {
    const int number = rows_.empty() ? 1 : rows_.back().number->value();
    const Row& row = addRow(placeholder_, number);
    row.text->setFocus();
    row.text->selectAll();
    tell();
  });
  showEmptiness();
}

ListEditor::Row& ListEditor::addRow(const QString& text, int number) {
  Row row{child<QWidget>(this), nullptr, nullptr};
  auto* const layout = layoutOf<QHBoxLayout>(row.widget, 6);
  row.text = child<QLineEdit>(row.widget, text);
  row.text->setAccessibleName(toQt(texts_.textLabel));
  row.text->setPlaceholderText(toQt(texts_.textLabel));
  row.number = child<QSpinBox>(row.widget);
  row.number->setRange(1, std::numeric_limits<int>::max());
  row.number->setValue(number);
  row.number->setFixedWidth(88);
  row.number->setAccessibleName(toQt(texts_.numberLabel));
  row.number->setToolTip(toQt(texts_.numberLabel));
  QPushButton* const gone = quietButton(row.widget, "close", "Remove");
  layout->addWidget(row.text, 1);
  layout->addWidget(row.number);
  layout->addWidget(gone);
  rowsLayout_->addWidget(row.widget);
  connect(row.text, &QLineEdit::textChanged, this, [this] { tell(); });
  connect(row.number, &QSpinBox::valueChanged, this, [this] { tell(); });
  connect(gone, &QPushButton::clicked, this, [this, widget = row.widget] { remove(widget); });
  rows_.push_back(row);
  showEmptiness();
  return rows_.back();
}

void ListEditor::remove(const QWidget* row) {
  const auto found = std::ranges::find(rows_, row, &Row::widget);
  found->widget->hide();
  found->widget->deleteLater();  // its own button is what is being clicked
  rows_.erase(found);
  showEmptiness();
  tell();
}

void ListEditor::showEmptiness() {
  empty_->setVisible(rows_.empty());
}

void ListEditor::tell() const {
  JsonArray items;
  for (const Row& row : rows_) {
    items.emplace_back(JsonObject{{texts_.textKey, fromQt(row.text->text())}, {texts_.numberKey, row.number->value()}});
  }
  whenSet_(JsonValue(std::move(items)).text());
}

}  // namespace quirn::window
