// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The named actions as desktop files and the session bus call them: "merge-pdfs" for "Merge PDFs".

#pragma once

#include <string>
#include <string_view>

namespace quirn {

std::string actionName(std::string_view title);

// The operation of that action; empty for the one that only opens files, and for a name of none.
std::string operationOfAction(std::string_view name);

}  // namespace quirn
