// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a person calls a file: the word in a row of the window, and which picture stands before it.

#pragma once

#include <string>

#include "core/input_file.h"

namespace quirn {

enum class FileKind { folder, pdf, image, video, audio, archive, text, table, document, other };

// Looks at the name and the type; never at the content.
FileKind fileKind(const InputFile& input);

// "Folder", "PDF document", "JPG image", "ZIP archive", "JSON file", "File"
std::string fileKindText(const InputFile& input);

}  // namespace quirn
