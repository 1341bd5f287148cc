// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/event_bus.h"

namespace quirn {

EventBus& EventBus::shared() {
  static EventBus bus;
  return bus;
}

}  // namespace quirn
