// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A shared library of this program, loaded when it is needed. Only one that was installed with the program is: no
// setting, variable or argument leads to another place.

#pragma once

#include <string>

namespace quirn::platform {

// The address of a function that the module of that name exports. The module stays loaded. Throws std::runtime_error
// if there is no such module or function, or the name is not made of a-z, 0-9 and "-".
void* moduleFunction(const std::string& module, const char* function);

}  // namespace quirn::platform
