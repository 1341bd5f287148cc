// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The notifications between the router, the menus and the window.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/event_bus.h"

namespace quirn {

struct QuirnRunRequest {
  std::string opID;
  std::vector<std::filesystem::path> urls;
};

namespace notifications {

// Add these files to the window.
inline constexpr Notification<std::vector<std::filesystem::path>> openURLs{"quirn.openURLs"};
// Run this operation on these files in the window.
inline constexpr Notification<QuirnRunRequest> runOpOnURLs{"quirn.runOpOnURLs"};
// Menu commands: show the file picker, open the command palette, paste.
inline constexpr Notification<NoPayload> openFiles{"quirn.openFiles"};
inline constexpr Notification<NoPayload> openPalette{"quirn.openPalette"};
inline constexpr Notification<NoPayload> paste{"quirn.paste"};

}  // namespace notifications
}  // namespace quirn
