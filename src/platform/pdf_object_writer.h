// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A PDF file written object by object, each as soon as it is known: memory holds the offsets alone. Ends in a
// cross-reference table (ISO 32000-2, 7.5.4).

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/pdf_encryption.h"
#include "platform/pdf_sink.h"

namespace quirn::platform {

class PDFObjectWriter {
 public:
  // The descriptor stays the caller's and is at the beginning of its file. With an encryption, strings must come
  // encrypted already; streams are encrypted here.
  explicit PDFObjectWriter(int descriptor, const PDFEncryption* encryption = nullptr);

  // A number for an object that is written later, or never: whatever refers to it then refers to null.
  int reserve();

  void write(int number, std::string_view text);

  // A stream in pieces, `length` bytes together. `dictionary` is its text, without a length.
  void beginStream(int number, std::string_view dictionary, std::int64_t length);
  void append(std::string_view bytes);
  void endStream();

  // `trailer` are the trailer's entries but for its size and, unless it has one, the identifier, which comes from the
  // content and from `origin`.
  void finish(std::string_view trailer, std::string_view origin);

 private:
  void put(std::string_view text);
  void begin(int number);

  PDFSink sink_;
  const PDFEncryption* encryption_;
  std::unique_ptr<PDFStreamCipher> cipher_;  // of the stream that is being written
  std::int64_t position_ = 0;
  std::vector<std::int64_t> offsets_;  // of the objects from number 1 on; 0 for one that isn't written
};

// The header says 1.7. What the catalog says besides for a source of that version; empty up to 1.7.
std::string versionEntry(const std::string& sourceVersion);

}  // namespace quirn::platform
