// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Where a writer's bytes go, in order: an output of a run, a buffer, a file.

#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>

#include "core/staged_output.h"
#include "platform/bytes.h"
#include "platform/file_descriptor.h"

namespace quirn {

using ByteSink = std::function<void(std::span<const std::byte>)>;

// `output` outlives it. Throws writeFailed.
ByteSink sinkInto(StagedOutput& output);

// A new file in the place of whatever stands at `path`; it is closed when the last copy of the sink is gone. An empty
// function if the file can't be made. Throws std::system_error when writing fails.
ByteSink sinkIntoFile(const std::filesystem::path& path);

// Hands on what it is given in larger pieces, since a call for each header would cost more than the header.
class BufferedSink {
 public:
  explicit BufferedSink(ByteSink sink) : sink_(std::move(sink)) {}

  void write(std::span<const std::byte> bytes);
  // Hands on what is still kept.
  void flush();
  // The same, and lets go of the sink.
  void close();

 private:
  ByteSink sink_;
  platform::Bytes kept_;
};

}  // namespace quirn
