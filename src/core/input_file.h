// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A file or folder that an operation is asked to work on, as it was when it was taken in.

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/content_type.h"
#include "core/operation_result.h"
#include "platform/uuid.h"

namespace quirn {

struct InputFile {
  platform::Uuid id;          // new for every intake
  std::filesystem::path url;  // absolute
  ContentType contentType;
  std::int64_t size = 0;  // bytes
  bool isDirectory = false;
  std::optional<std::vector<std::byte>> bookmark;  // what a sandbox would need to reach the file again; unused here

  // The last component, in the file system's own bytes.
  std::string fileName() const { return url.filename().string(); }
  // Without the extension: "photo" of "photo.jpg", ".profile" of ".profile".
  std::string stem() const { return url.stem().string(); }
  // Lower case, without the dot; empty if there is none.
  std::string extension() const;
};

struct Intake {
  std::vector<InputFile> files;
  std::vector<FileFailure> unreadable;  // one for each location that is missing, forbidden, or neither file nor folder
};

// Takes in the locations in order; links are followed, and a relative location is taken from the
// working directory. A file's type comes from its name; only where that says nothing, or several
// things, does the beginning of its content decide.
Intake takeIn(std::span<const std::filesystem::path> locations);

// The result of a run with what could not be taken in at the head of its failures.
OperationResult withUnreadable(OperationResult result, std::vector<FileFailure> unreadable);

// The absolute location of a path from the command line or a drop, without "." and ".." as far as
// that can't lead to another file. An empty path stays empty: nothing is there.
std::filesystem::path located(const std::filesystem::path& path);

// ASCII letters only, as extensions and type names are compared.
std::string lowerCased(std::string_view text);
std::string upperCased(std::string_view text);

}  // namespace quirn
