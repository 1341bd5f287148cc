// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An output in the making. It appears under its name only when it is whole and on the disk; dropped
// before publish(), it was never there.

#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string_view>

#include "core/operation_result.h"

namespace quirn {

class StagedOutput {
 public:
  virtual ~StagedOutput() = default;

  // Appends. Throws writeFailed.
  virtual void write(std::span<const std::byte> bytes);
  void write(std::string_view text);

  // For libraries that write to a descriptor of their own accord. Belongs to this object.
  virtual int descriptor() const = 0;

  // The name that is kept for it. Should another program take it first, the result of the run has
  // the next free one. What publish() returns may lack a number that keeps it apart from others until then.
  virtual const std::filesystem::path& url() const = 0;

  // Hands the finished output over; the last call on this object. It has its name at the latest
  // when the run ends.
  virtual OutputFile publish(OutputRole role) = 0;

 protected:
  // Writes all of the bytes to an output's descriptor. Throws writeFailed.
  static void append(int descriptor, const std::filesystem::path& url, std::span<const std::byte> bytes);
};

}  // namespace quirn
