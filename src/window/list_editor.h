// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A setting that is a list: rows of a text and a number, which are added, changed and removed.

#pragma once

#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "core/panel.h"

namespace quirn::window {

class ListEditor final : public QWidget {
 public:
  // `value` and what `whenSet` is called with are the control's text form, an array of objects.
  ListEditor(const Control& control, const std::string& value, std::function<void(const std::string&)> whenSet,
             QWidget* parent);

 private:
  struct Row {
    QWidget* widget = nullptr;
    QLineEdit* text = nullptr;
    QSpinBox* number = nullptr;
  };

  Row& addRow(const QString& text, int number);
  void remove(const QWidget* row);
  void tell() const;
  void showEmptiness();

  ListTexts texts_;
  QString placeholder_;
  std::function<void(const std::string&)> whenSet_;
  QVBoxLayout* rowsLayout_ = nullptr;
  QWidget* empty_ = nullptr;
  std::vector<Row> rows_;
};

}  // namespace quirn::window
