// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A descriptor as the PDF library writes to it: the end of a pipeline, buffered.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/pdf_library.h"

namespace quirn::platform {

class PDFSink final : public Pipeline {
 public:
  // The descriptor stays the caller's.
  explicit PDFSink(int descriptor);

  // Throws std::system_error.
  void write(const unsigned char* bytes, std::size_t count) override;
  void append(std::string_view bytes);
  // The library may call it for every part of the output.
  void finish() override;

 private:
  int descriptor_;
  std::string buffer_;
};

}  // namespace quirn::platform
