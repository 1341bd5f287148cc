// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A gzip stream of any length, compressed on all processors.

#pragma once

#include <chrono>
#include <span>

#include "archive/byte_sink.h"
#include "archive/deflate_pipeline.h"
#include "archive/gzip.h"

namespace quirn {

class GzipWriter {
 public:
  // Throws what the sink throws, as the others do.
  GzipWriter(ByteSink sink, std::chrono::sys_seconds modified) : sink_(std::move(sink)), pipeline_(sink_) {
    sink_(gzipHeader(modified));
  }

  void write(std::span<const std::byte> bytes) { pipeline_.write(bytes); }

  // The last call.
  void finish() {
    pipeline_.finish();
    sink_(gzipTrailer(pipeline_.crc(), pipeline_.size()));
  }

 private:
  ByteSink sink_;
  DeflatePipeline pipeline_;
};

}  // namespace quirn
