// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFile>

#include "window/icon.h"
#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

using testing::Contains;

TEST(WindowStart, ARequestBringsFilesOrBeginsAnOperation) {
  WindowUnderTest test;
  const std::string file = test.folder.file("a b.txt", "x").string();
  test.application->handle({.activationToken = "", .operationID = "", .locations = {file}});
  ASSERT_TRUE(test.wait([&] { return test.session().inputs().size() == 1; }));
  test.application->handle({.activationToken = "t", .operationID = "text.hash-files", .locations = {}});
  ASSERT_NE(test.session().configuring(), nullptr) << "without files of its own, on those in the window";
  test.session().closePanel();
  const std::string link = "quirn://run?op=text.hash-files&path=" + file;
  test.application->handle({.activationToken = "", .operationID = "", .locations = {link}});
  EXPECT_TRUE(test.wait([&] { return test.session().configuring() != nullptr; }));
}

TEST(WindowStart, AnActionWithoutFilesAsksForSome) {
  WindowUnderTest test;
  test.application->handle({.activationToken = "", .operationID = "pdf.merge", .locations = {}});
  EXPECT_THAT(test.bannerTexts(), Contains("Drop some files first."));
}

TEST(WindowStart, EveryOperationHasAnIconOfItsOwnSet) {
  WindowUnderTest test;
  for (const OperationType& type : test.registry.operations()) {
    const std::string_view drawing = window::drawingFor(type.info().iconName);
    EXPECT_TRUE(drawing != "app" || type.info().iconName.starts_with("app")) << type.info().iconName << " has no row";
    EXPECT_TRUE(QFile::exists(":/quirn/icons/" + window::toQt(drawing) + ".svg")) << type.info().iconName;
  }
}

}  // namespace
}  // namespace quirn::tests
