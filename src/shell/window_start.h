// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How the program and the module with its window meet, and how a second start reaches the first.

#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/registry.h"
#include "platform/single_instance.h"

namespace quirn {

// What a start of the program asks of the window.
struct WindowRequest {
  std::string activationToken;         // the desktop's leave to come to the front; empty without one
  std::string operationID;             // what to do with the files, or with those in the window; empty: show them
  std::vector<std::string> locations;  // files, and links as QuirnRouter::handle() takes them

  // As one text, and back. Whatever the text is, something comes back.
  std::string encoded() const;
  static WindowRequest decoded(std::string_view text);
};

// The request of this start: paths made absolute, links as they are, the token from the environment.
WindowRequest windowRequest(std::span<const std::string> locations, std::string operationID);

// The name that instances on this display share.
std::string windowInstanceName();

// Whether there is a display to open a window on.
bool hasDisplay();

struct WindowStart {
  OperationRegistry& registry;
  WindowRequest request;
  platform::SingleInstance* instance = nullptr;  // null where there is no place to be found at
};

// Exported by the module "window", as `extern "C"`: shows the window until it is closed, and gives
// the exit status.
using OpenWindow = int (*)(WindowStart& start);
inline constexpr const char* openWindowName = "quirnOpenWindow";

}  // namespace quirn
