// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One setting as the widget that sets it: a switch, a row of choices, a number, a slider, a text. What
// it shows and hands over is text, as the control itself takes and gives it.

#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <string>

#include "core/panel.h"
#include "workbench/text_tool.h"

namespace quirn::window {

// What a widget tells at every change by the person.
struct ControlAnswers {
  std::function<void(const std::string&)> set;     // the new text
  std::function<void(const std::string&)> refuse;  // a sentence on why there is none yet
};

// The widget is called after the control's label.
QWidget* controlWidget(QWidget* parent, const Control& control, const std::string& value,
                       const ControlAnswers& answers);

// Whether the widget shows the control's label itself.
bool showsOwnLabel(const Control& control);

// The control of a text tool in the terms of a panel's: without a record that it is bound to.
Control panelControl(const TextToolControl& control);

}  // namespace quirn::window
