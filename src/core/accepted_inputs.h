// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Which inputs an operation can run on, stated as a record: the test itself, the sentence that
// tells a person what is needed, and the line in the documentation come from the same place.

#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <limits>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "core/input_file.h"

namespace quirn {

struct AcceptedInputs {
  enum class Folders { refused, allowed, only };

  static constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

  // "file" and "files", "PDF" and "PDFs": what one input, and several, are called.
  std::string singular = "file";
  std::string plural = "files";
  std::size_t atLeast = 1;
  std::size_t atMost = anyNumber;
  Folders folders = Folders::refused;
  // Looks at the name, the type and the size, never at the content. Empty: every file will do.
  std::function<bool(const InputFile&)> matches;

  bool accepts(std::span<const InputFile> inputs) const;

  // "One file", "Two or more PDFs", "Any number of files", …
  std::string description() const;
};

// Whether the file's lower-cased extension is one of these.
bool hasExtension(const InputFile& input, std::initializer_list<std::string_view> extensions);

}  // namespace quirn
