// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A page or document that a scanner or a nearby camera sends.

#pragma once

#include <cstddef>
#include <vector>

#include "core/event_bus.h"

namespace quirn {

struct Scan {
  std::vector<std::byte> bytes;  // of a PDF or a PNG
};

namespace notifications {

inline constexpr Notification<Scan> scanReceived{"quirn.scanReceived"};

}  // namespace notifications
}  // namespace quirn
