// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <QApplication>

#include "window/application.h"
#include "window/window_under_test.h"

int main(int argc, char** argv) {
  if (const auto status = quirn::tests::workerStatus(argc, argv)) return *status;
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen").toUtf8());
  QApplication application(argc, argv);
  quirn::window::Look look;
  look.apply({.scheme = quirn::window::Scheme::light, .motion = quirn::window::Motion::reduced});
  return RUN_ALL_TESTS();
}
