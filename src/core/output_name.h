// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The house style of output names, "{stem} ({suffix}).{extension}", and the promise that no two
// outputs of this process ever get the same one.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quirn {

// What an output is called. A name without a suffix has no brackets, one without an extension no dot.
struct OutputNaming {
  std::string stem;
  std::string suffix;
  std::string extension;
};

// The first choice of such a name.
std::string fileNameOf(const OutputNaming& naming);

// A location in `folder` that no file has and that this process has not given out before; " ({n})"
// stands before the extension where needed. The name is reserved by this call. A stem too long for
// a file name is shortened. May be called from any thread.
std::filesystem::path uniqueOutputURL(const std::filesystem::path& folder, std::string_view stem,
                                      std::string_view suffix, std::string_view extension);

std::filesystem::path uniqueOutputURL(const std::filesystem::path& folder, const OutputNaming& naming);

// The same for a file that is named for what it is, "{stem}.{extension}".
std::filesystem::path uniqueFileURL(const std::filesystem::path& folder, std::string_view stem,
                                    std::string_view extension);

}  // namespace quirn
