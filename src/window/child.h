// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Qt's way of owning widgets, in one place: a child belongs to its parent, which destroys it.

#pragma once

#include <QBoxLayout>
#include <QString>
#include <QWidget>
#include <memory>
#include <utility>

namespace quirn::window {

// A new object of the parent, whose constructor takes the parent behind the other arguments.
template <class Object, class Parent, class... Arguments>
Object* child(Parent* parent, Arguments&&... arguments) {
  return std::make_unique<Object>(std::forward<Arguments>(arguments)..., parent).release();
}

// The layout of a widget, without margins of its own.
template <class Layout>
Layout* layoutOf(QWidget* widget, int spacing = 0, QMargins margins = {}) {
  auto* const layout = child<Layout>(widget);
  layout->setSpacing(spacing);
  layout->setContentsMargins(margins);
  return layout;
}

// A layout in another.
template <class Layout>
Layout* layoutIn(QBoxLayout* outer, int spacing = 0) {
  auto* const layout = std::make_unique<Layout>().release();
  layout->setSpacing(spacing);
  layout->setContentsMargins({});
  outer->addLayout(layout);
  return layout;
}

}  // namespace quirn::window
