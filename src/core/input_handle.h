// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An input that an operation was granted, open for reading.

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "platform/mapped_file.h"
#include "platform/readable_file.h"

namespace quirn {

class InputHandle {
 public:
  // `url` is what messages name.
  InputHandle(platform::ReadableFile file, std::filesystem::path url);

  // The next bytes, at most bytes.size() of them; 0 at the end. Throws readFailed, also when the
  // file is cut while it is read: what comes back is never a part that passes for the whole.
  std::size_t read(std::span<std::byte> bytes);

  // All that is left of the file. Throws readFailed, or unsupportedInput when that is more than
  // `mostBytes`.
  std::string readAll(std::int64_t mostBytes);

  // All of it as memory, wherever reading has got to. Throws readFailed. For boxed operations: a file that is cut
  // meanwhile ends the process.
  platform::MappedFile map() const;

  // In bytes, when the file was opened.
  std::int64_t size() const { return file_.size(); }

  // For libraries that read from a descriptor of their own accord. Belongs to this object.
  int descriptor() const { return file_.descriptor(); }

  // The file itself, for services of platform/ that keep it open.
  platform::ReadableFile takeFile() && { return std::move(file_); }

  const std::filesystem::path& url() const { return url_; }

 private:
  platform::ReadableFile file_;
  std::filesystem::path url_;
};

// A file named in another file, such as a line of a checksum list.
struct Neighbour {
  enum class Place {
    here,
    missing,
    outside,  // the name leads out of the folder; nothing was touched
  };
  Place place = Place::missing;
  std::optional<InputHandle> file;  // set when here
};

}  // namespace quirn
