// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the program calls when it is to open its window.

#include "shell/window_start.h"
#include "window/application.h"

extern "C" __attribute__((visibility("default"))) int quirnOpenWindow(quirn::WindowStart& start) {
  return quirn::window::run(start);
}
