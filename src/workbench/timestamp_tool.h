// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A moment in every common form.

#pragma once

#include <string>
#include <string_view>

#include "platform/time_zone.h"
#include "workbench/instant.h"

namespace quirn {

// `input` is a Unix epoch, in seconds or milliseconds, or a date; one without an offset is of UTC.
// Throws TextToolError.
std::string momentInEveryForm(std::string_view input, const Instant& now, const platform::TimeZone& localZone);

}  // namespace quirn
