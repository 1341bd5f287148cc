// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A descriptor as the PDF library writes to it: the end of a pipeline, buffered.

#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>

#include "platform/pdf_library.h"

namespace quirn::platform {

class PDFSink final : public Pipeline {
 public:
  // The descriptor stays the caller's.
  explicit PDFSink(int descriptor);

  // Both throw std::system_error.
  void append(std::string_view bytes);
  // Writes what is still buffered; the last call. Throws what a write of the library ran into, too.
  void flush();

  // The library writes in destructors as well, where nothing may be thrown: an error is kept until flush().
  void write(const unsigned char* bytes, std::size_t count) override;

 private:
  // Does nothing, and is for the library alone: it may call it for every part of the output.
  void finish() override {}

  int descriptor_;
  std::string buffer_;
  std::exception_ptr failure_;
};

}  // namespace quirn::platform
