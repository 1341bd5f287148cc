// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Joining a name from an untrusted file to a folder.

#pragma once

#include <filesystem>
#include <optional>

namespace quirn {

// Where `name`, taken from inside the absolute `folder`, leads as text: the relative path beneath
// the folder, "." for the folder itself, or nothing if it leads outside. Links are not looked at;
// opening beneath the folder must refuse those that leave it.
std::optional<std::filesystem::path> pathInside(const std::filesystem::path& folder, const std::filesystem::path& name);

}  // namespace quirn
