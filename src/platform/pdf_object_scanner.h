// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The text of one object taken over into another file (ISO 32000-2, 7.3) without building it: every token stays as it
// is but for references, which get their new numbers. That is an order of magnitude faster than parsing and printing,
// and what it finds odd is left to the library, which knows how to repair.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quirn::platform {

struct PDFReference {
  int number = 0;
  int generation = 0;
  auto operator<=>(const PDFReference&) const = default;
};

// What the text is written against.
struct PDFRewriting {
  // The number of the object in the new file; 0 for one that isn't taken over.
  std::function<int(PDFReference)> numberOf;
  // The integer that the object is, where a stream's length is written elsewhere.
  std::function<std::optional<std::int64_t>(PDFReference)> integerAt;
  // What stands for a string of these bytes; empty where strings stay as they are.
  std::function<std::string(std::string_view)> stringText;
};

struct ScannedObject {
  enum class End {
    complete,
    cut,  // the bytes end before the object does
    odd,  // not as the standard has it
  };
  End end = End::odd;
  PDFReference name;            // as it stands before "obj"
  bool isStream = false;        // then the text is the dictionary, without its /Length
  std::size_t dataOffset = 0;   // of a stream: where its bytes begin, in the bytes scanned
  std::int64_t dataLength = 0;  // and how many they are, as the dictionary says
};

// Scans "12 0 obj … endobj", or up to the bytes of a stream, and appends its text to `text`. What stands behind doesn't
// matter.
ScannedObject scanNumberedObject(std::string_view bytes, const PDFRewriting& rewriting, std::string& text);

// Scans an object as it stands in an object stream, where nothing follows it.
ScannedObject scanBareObject(std::string_view bytes, const PDFRewriting& rewriting, std::string& text);

// The bytes of a literal or hexadecimal string, its delimiters included.
std::string decodedString(std::string_view token);

}  // namespace quirn::platform
