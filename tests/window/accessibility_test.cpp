// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
#include <set>
#include <string>

#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

// What a person may act on has to be called something.
bool needsName(QAccessible::Role role) {
  static const std::set<QAccessible::Role> roles{
      QAccessible::Button,      QAccessible::CheckBox,    QAccessible::ComboBox, QAccessible::EditableText,
      QAccessible::List,        QAccessible::ListItem,    QAccessible::SpinBox,  QAccessible::Slider,
      QAccessible::ProgressBar, QAccessible::AlertMessage};
  return roles.contains(role);
}

struct Walk {
  int named = 0;
  std::vector<std::string> nameless;

  void visit(QAccessibleInterface* node) {
    if (node == nullptr || !node->isValid() || node->state().invisible) return;
    if (needsName(node->role())) {
      if (node->text(QAccessible::Name).isEmpty()) {
        nameless.push_back(node->object() == nullptr ? "an item"
                                                     : node->object()->objectName().toStdString() + " of " +
                                                           node->parent()->text(QAccessible::Name).toStdString());
      } else {
        ++named;
      }
    }
    // The text field inside a number's box is named by the box.
    if (node->role() == QAccessible::SpinBox || node->role() == QAccessible::ComboBox) return;
    for (int i = 0; i < node->childCount(); ++i) visit(node->child(i));
  }
};

void expectAllNamed(QWidget& window, const std::string& state) {
  Walk walk;
  walk.visit(QAccessible::queryAccessibleInterface(&window));
  EXPECT_GT(walk.named, 5) << state;
  for (const std::string& each : walk.nameless) ADD_FAILURE() << "in " << state << ", nameless: " << each;
}

TEST(Accessibility, EverythingThatCanBeUsedHasAName) {
  WindowUnderTest test;
  expectAllNamed(test.window(), "the empty window");
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.txt", "x")}));
  test.application->banners().post(BannerStyle::info, "Told.");
  expectAllNamed(test.window(), "a window with files and a banner");
  ASSERT_TRUE(test.choose("operations", "Hash Files"));
  expectAllNamed(test.window(), "the options");
  test.session().closePanel();
  test.application->events().post(notifications::openPalette);
  expectAllNamed(test.window(), "the search");
  for (const char* const tool : {"dev.json", "dev.password", "time.cron"}) {
    test.session().attemptRun(test.type(tool), {});
    expectAllNamed(test.window(), tool);
    test.session().cancelEditing();
  }
}

TEST(Accessibility, BannersAreAlertsWithTheirText) {
  WindowUnderTest test;
  test.application->banners().post(BannerStyle::warning, "Drop some files first.");
  const QWidget* const banner = test.find("banners")->findChild<QWidget*>({}, Qt::FindDirectChildrenOnly);
  QAccessibleInterface* const node = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(banner));
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->role(), QAccessible::AlertMessage);
  EXPECT_EQ(node->text(QAccessible::Name), "Drop some files first.");
}

TEST(Accessibility, TheKeyboardReachesFilesOperationsAndSearch) {
  WindowUnderTest test;
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.txt", "x")}));
  std::set<std::string> reached;
  QWidget* widget = &test.window();
  for (int i = 0; i < 60; ++i) {
    widget = widget->nextInFocusChain();
    if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0)
      reached.insert(widget->objectName().toStdString());
  }
  for (const char* const name : {"searchButton", "inputs", "operations", "clearFiles"})
    EXPECT_TRUE(reached.contains(name)) << name;
}

}  // namespace
}  // namespace quirn::tests
