// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A cron expression in words, and when it fires next.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/time_zone.h"

namespace quirn {

// `now` in seconds since 1970 UTC. Throws TextToolError.
std::string explainedCron(std::string_view expression, std::int64_t now, const platform::TimeZone& zone);

}  // namespace quirn
