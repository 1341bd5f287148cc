// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// In a program that links this, the calls that change files are counted, and one of them never comes: the program is
// killed instead.

#pragma once

namespace quirn::hostile {

// From now on; the first call is number 1. 0 kills nobody.
void killAtCall(int number);

}  // namespace quirn::hostile
