// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The objects of a file as their bytes stand in it, found through the library's cross-reference table.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/pdf_library.h"
#include "platform/pdf_object_scanner.h"
#include "platform/pdf_source.h"

namespace quirn::platform {

class PDFRawObjects {
 public:
  // Both outlive it.
  PDFRawObjects(QPDF& qpdf, PDFSource& source);

  // Appends the rewritten text of the object. Nothing, and no text, where only the library can say what it is: it is
  // missing, damaged, or encrypted. A stream's offset is that in the file then, and its bytes are followed by
  // "endstream".
  std::optional<ScannedObject> scan(PDFReference reference, const PDFRewriting& rewriting, std::string& text);

  // The text of an object that is no stream, with its references as they are but for their generations; nothing where
  // scan() says nothing.
  std::optional<std::string> textOf(PDFReference reference);

  // `length` bytes of the file, fewer at its end. Holds until the next call of any member.
  std::string_view bytes(std::int64_t offset, std::size_t length);

 private:
  struct Entry {
    int generation = 0;
    std::int64_t offset = 0;  // in the file; or, in an object stream, the place among its objects
    int container = 0;        // the object stream's number, 0 for none
  };
  struct Container {
    std::string data;
    std::vector<std::pair<int, std::size_t>> objects;  // number and offset in `data`
  };

  std::optional<ScannedObject> scanInFile(PDFReference reference, std::int64_t offset, const PDFRewriting& rewriting,
                                          std::string& text);
  std::optional<ScannedObject> scanInContainer(PDFReference reference, const Entry& entry,
                                               const PDFRewriting& rewriting, std::string& text);
  const Container& containerOf(int number);
  Container readContainer(int number);

  QPDF& qpdf_;
  PDFSource& source_;
  const bool isEncrypted_;
  std::unordered_map<int, Entry> entries_;
  std::unordered_map<int, Container> containers_;  // the last few
  std::size_t containerBytes_ = 0;
  std::string window_;
  std::int64_t windowStart_ = 0;
};

}  // namespace quirn::platform
