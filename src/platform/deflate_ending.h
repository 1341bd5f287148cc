// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Taking the end off a DEFLATE stream (RFC 1951), so that another can follow it.

#pragma once

#include "platform/bytes.h"

namespace quirn::platform {

// Takes a whole, sound stream. Its last block no longer says that it is the last, and an empty stored block behind it
// fills up the byte. Throws std::invalid_argument for anything but such a stream.
void reopen(Bytes& stream);

}  // namespace quirn::platform
