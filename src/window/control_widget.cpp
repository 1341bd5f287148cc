// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/control_widget.h"

#include <fmt/format.h>

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSlider>
#include <algorithm>
#include <cmath>
#include <utility>

#include "window/child.h"
#include "window/icon.h"
#include "window/list_editor.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

using WhenSet = std::function<void(const std::string&)>;

QWidget* toggleWidget(QWidget* parent, const Control& control, const std::string& value, WhenSet whenSet) {
  auto* const box = child<QCheckBox>(parent, toQt(control.label));
  box->setChecked(value == "true");
  QObject::connect(box, &QCheckBox::toggled, box, [whenSet](bool isOn) { whenSet(isOn ? "true" : "false"); });
  return box;
}

// A few short choices stand side by side, so that all of them are seen.
bool fitsInARow(const Control& control) {
  constexpr std::size_t mostOptions = 4;
  constexpr std::size_t mostCharacters = 34;
  std::size_t characters = 0;
  for (const Control::Option& option : control.options) characters += option.label.size() + 2;
  return control.options.size() <= mostOptions && characters <= mostCharacters;
}

QWidget* segments(QWidget* parent, const Control& control, const std::string& value, const WhenSet& whenSet) {
  auto* const row = child<QWidget>(parent);
  auto* const layout = layoutOf<QHBoxLayout>(row, 6);
  auto* const group = child<QButtonGroup>(static_cast<QObject*>(row));
  for (const Control::Option& option : control.options) {
    QPushButton* const segment = button(row, {}, toQt(option.label));
    segment->setCheckable(true);
    segment->setChecked(option.name == value);
    segment->setAccessibleName(toQt(control.label + ": " + option.label));
    group->addButton(segment);
    layout->addWidget(segment);
    QObject::connect(segment, &QPushButton::toggled, row, [whenSet, name = option.name](bool isOn) {
      if (isOn) whenSet(name);
    });
  }
  layout->addStretch();
  return row;
}

QWidget* choiceWidget(QWidget* parent, const Control& control, const std::string& value, const WhenSet& whenSet) {
  if (fitsInARow(control)) return segments(parent, control, value, whenSet);
  auto* const box = child<QComboBox>(parent);
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(12);
  for (const Control::Option& option : control.options) box->addItem(toQt(option.label), toQt(option.name));
  box->setCurrentIndex(box->findData(toQt(value)));
  QObject::connect(box, &QComboBox::currentIndexChanged, box,
                   [box, whenSet](int index) { whenSet(fromQt(box->itemData(index).toString())); });
  return box;
}

QDoubleSpinBox* numberBox(QWidget* parent, const Control& control, int decimals) {
  auto* const box = child<QDoubleSpinBox>(parent);
  box->setLocale(QLocale::c());
  box->setDecimals(decimals);
  box->setRange(control.legal.lowest, control.legal.highest);
  box->setSingleStep(decimals == 0 ? 1 : (control.suggested.highest - control.suggested.lowest) / 20);
  if (!control.unit.empty()) box->setSuffix(" " + toQt(control.unit));
  box->setMaximumWidth(180);
  return box;
}

int decimalsFor(const Control& control) {
  const double span = control.suggested.highest - control.suggested.lowest;
  return span > 50 ? 1 : 2;
}

std::string numberText(double value, int decimals) {
  std::string text = fmt::format("{:.{}f}", value, decimals);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

QWidget* stepperWidget(QWidget* parent, const Control& control, const std::string& value, const WhenSet& whenSet) {
  QDoubleSpinBox* const box = numberBox(parent, control, 0);
  box->setValue(std::strtod(value.c_str(), nullptr));
  QObject::connect(box, &QDoubleSpinBox::valueChanged, box, [whenSet](double now) { whenSet(numberText(now, 0)); });
  return box;
}

QWidget* sliderWidget(QWidget* parent, const Control& control, const std::string& value, const WhenSet& whenSet) {
  constexpr int steps = 200;
  auto* const row = child<QWidget>(parent);
  auto* const layout = layoutOf<QHBoxLayout>(row, 12);
  auto* const slider = child<QSlider>(row, Qt::Horizontal);
  slider->setRange(0, steps);
  slider->setAccessibleName(toQt(control.label));
  const int decimals = decimalsFor(control);
  QDoubleSpinBox* const box = numberBox(row, control, decimals);
  box->setAccessibleName(toQt(control.label));
  const Range span = control.suggested;
  const auto place = [slider, span](double number) {
    const QSignalBlocker blocker(slider);
    slider->setValue(static_cast<int>(std::lround((number - span.lowest) / (span.highest - span.lowest) * steps)));
  };
  box->setValue(std::strtod(value.c_str(), nullptr));
  place(box->value());
  QObject::connect(slider, &QSlider::valueChanged, box,
                   [box, span](int step) { box->setValue(span.lowest + (span.highest - span.lowest) * step / steps); });
  QObject::connect(box, &QDoubleSpinBox::valueChanged, row, [place, whenSet, decimals](double number) {
    place(number);
    whenSet(numberText(number, decimals));
  });
  layout->addWidget(slider, 1);
  layout->addWidget(box);
  row->setFocusProxy(slider);
  return row;
}

QWidget* fieldWidget(QWidget* parent, const Control& control, const std::string& value, const WhenSet& whenSet) {
  auto* const edit = child<QLineEdit>(parent, toQt(value));
  edit->setPlaceholderText(toQt(control.placeholder));
  QObject::connect(edit, &QLineEdit::textChanged, edit, [whenSet](const QString& text) { whenSet(fromQt(text)); });
  return edit;
}

QLineEdit* hiddenText(QWidget* parent, const Control& control, const QString& placeholder) {
  auto* const edit = child<QLineEdit>(parent);
  edit->setEchoMode(QLineEdit::Password);
  edit->setPlaceholderText(placeholder);
  edit->setAccessibleName(toQt(control.label) + (placeholder.isEmpty() ? "" : ", " + placeholder));
  auto* const reveal = edit->addAction(icon("eye"), QLineEdit::TrailingPosition);
  reveal->setToolTip("Show what is typed");
  reveal->setCheckable(true);
  QObject::connect(reveal, &QAction::toggled, edit,
                   [edit](bool isShown) { edit->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password); });
  return edit;
}

QWidget* secretWidget(QWidget* parent, const Control& control, const WhenSet& whenSet) {
  QLineEdit* const edit = hiddenText(parent, control, {});
  QObject::connect(edit, &QLineEdit::textChanged, edit, [whenSet](const QString& text) { whenSet(fromQt(text)); });
  return edit;
}

// Typed twice, since nobody sees a slip.
QWidget* newSecretWidget(QWidget* parent, const Control& control, const ControlAnswers& answers) {
  auto* const rows = child<QWidget>(parent);
  auto* const layout = layoutOf<QVBoxLayout>(rows, 6);
  QLineEdit* const first = hiddenText(rows, control, {});
  QLineEdit* const again = hiddenText(rows, control, "once more");
  layout->addWidget(first);
  layout->addWidget(again);
  rows->setFocusProxy(first);
  const auto compare = [first, again, answers] {
    if (first->text() == again->text()) {
      answers.set(fromQt(first->text()));
    } else {
      answers.refuse(again->text().isEmpty() ? "Type it once more." : "The two are not the same.");
    }
  };
  for (QLineEdit* const edit : {first, again}) QObject::connect(edit, &QLineEdit::textChanged, rows, compare);
  return rows;
}

QWidget* made(QWidget* parent, const Control& control, const std::string& value, const ControlAnswers& answers) {
  const WhenSet& whenSet = answers.set;
  switch (control.kind) {
    case Control::Kind::toggle: return toggleWidget(parent, control, value, whenSet);
    case Control::Kind::choice: return choiceWidget(parent, control, value, whenSet);
    case Control::Kind::stepper: return stepperWidget(parent, control, value, whenSet);
    case Control::Kind::slider: return sliderWidget(parent, control, value, whenSet);
    case Control::Kind::list: return child<ListEditor>(parent, control, value, whenSet);
    case Control::Kind::secret: return secretWidget(parent, control, whenSet);
    case Control::Kind::newSecret: return newSecretWidget(parent, control, answers);
    case Control::Kind::field: break;
  }
  return fieldWidget(parent, control, value, whenSet);
}

struct AsPanelControl {
  Control operator()(const ToggleControl& control) const {
    return {.kind = Control::Kind::toggle, .key = control.key, .label = control.label};
  }
  Control operator()(const ChoiceControl& control) const {
    Control made{.kind = Control::Kind::choice, .key = control.key, .label = control.label};
    for (const std::string& option : control.options) made.options.push_back({option, option});
    return made;
  }
  Control operator()(const StepperControl& control) const {
    const Range range{static_cast<double>(control.lowest), static_cast<double>(control.highest)};
    return {
        .kind = Control::Kind::stepper, .key = control.key, .label = control.label, .legal = range, .suggested = range};
  }
  Control operator()(const FieldControl& control) const {
    return {
        .kind = Control::Kind::field, .key = control.key, .label = control.label, .placeholder = control.placeholder};
  }
};

}  // namespace

QWidget* controlWidget(QWidget* parent, const Control& control, const std::string& value,
                       const ControlAnswers& answers) {
  QWidget* const widget = made(parent, control, value, answers);
  widget->setObjectName(toQt(control.key));
  widget->setAccessibleName(toQt(control.label));
  return widget;
}

bool showsOwnLabel(const Control& control) {
  return control.kind == Control::Kind::toggle;
}

Control panelControl(const TextToolControl& control) {
  return std::visit(AsPanelControl(), control);
}

}  // namespace quirn::window
