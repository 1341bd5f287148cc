// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A file as the PDF library reads it. Remembers the first error of the disk, which the library takes for damage and
// tries to repair.

#pragma once

#include <exception>
#include <string>
#include <vector>

#include "platform/pdf_library.h"
#include "platform/readable_file.h"

namespace quirn::platform {

class PDFSource final : public InputSource {
 public:
  explicit PDFSource(ReadableFile file);

  // Throws std::system_error, again if a read has failed before.
  void check() const;

  // As ReadableFile::readAt(), without moving the position.
  std::size_t readAt(qpdf_offset_t offset, char* bytes, std::size_t count);

  qpdf_offset_t findAndSkipNextEOL() override;
  const std::string& getName() const override;
  qpdf_offset_t tell() override { return position_; }
  void seek(qpdf_offset_t offset, int whence) override;
  void rewind() override { position_ = 0; }
  std::size_t read(char* bytes, std::size_t count) override;
  void unreadCh(char character) override;

 private:
  // What the buffer holds from the position on; empty at the end of the file.
  std::string_view buffered();
  ReadableFile file_;
  qpdf_offset_t position_ = 0;
  std::vector<char> buffer_;
  qpdf_offset_t bufferStart_ = 0;
  std::size_t bufferLength_ = 0;
  std::exception_ptr failure_;
};

}  // namespace quirn::platform
