// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_sink.h"

#include <span>
#include <system_error>

#include "platform/file_descriptor.h"

namespace quirn::platform {
namespace {

constexpr std::size_t bufferSize = 256 << 10;

}  // namespace

PDFSink::PDFSink(int descriptor) : Pipeline("file", nullptr), descriptor_(descriptor) {
  buffer_.reserve(bufferSize);
}

void PDFSink::write(const unsigned char* bytes, std::size_t count) {
  if (failure_) return;
  try {
    append({reinterpret_cast<const char*>(bytes), count});
  } catch (const std::system_error&) {
    failure_ = std::current_exception();
  }
}

void PDFSink::append(std::string_view bytes) {
  if (buffer_.size() + bytes.size() > bufferSize) flush();
  if (bytes.size() >= bufferSize) {
    writeAll(descriptor_, std::as_bytes(std::span(bytes)));
  } else {
    buffer_ += bytes;
  }
}

void PDFSink::flush() {
  if (failure_) std::rethrow_exception(failure_);
  writeAll(descriptor_, std::as_bytes(std::span(buffer_)));
  buffer_.clear();
}

}  // namespace quirn::platform
