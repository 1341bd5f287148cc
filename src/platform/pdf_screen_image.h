// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A picture of a document as a screen needs it: no more pixels than it shows, as JPEG. Knows nothing of documents, so
// that several pictures can be worked on at once.

#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/pdf_jpeg.h"
#include "platform/pdf_jpx.h"

namespace quirn::platform {

// A picture as it is stored.
struct PDFStoredImage {
  enum class Coding { jpeg, jpx, samples };

  Coding coding = Coding::samples;
  std::string bytes;            // with every coding but `coding` undone
  std::size_t storedBytes = 0;  // as the document has it, whatever the coding
  PDFPixelSize size;            // as the document states it
  std::size_t components = 0;
  std::size_t bitsPerComponent = 8;  // 2, 4, 8 or 16
  // Of an indexed picture, the colours of 8-bit samples, `components` bytes each; its samples are one to a pixel.
  std::string palette;
  JPXColors colors = JPXColors::ofDocument;
};

struct PDFScreenImage {
  enum class Coding { jpeg, deflated };

  Coding coding = Coding::jpeg;
  std::string bytes;
  PDFPixelSize size;
  std::size_t bitsPerComponent = 8;
  std::size_t components = 0;
};

// The picture as JPEG, at most `most` pixels large; a palette is gone then. Where that would be no smaller, its samples
// deflated. Nothing where neither is smaller than what is stored.
std::optional<PDFScreenImage> screenImage(const PDFStoredImage& image, PDFPixelSize most);

// A mask of one component, reduced to `most` and deflated: JPEG would fringe its edges. Nothing as above.
std::optional<PDFScreenImage> screenMask(const PDFStoredImage& mask, PDFPixelSize most);

// The zlib form of the bytes (RFC 1950), as small as is worth the time.
std::string deflated(std::string_view bytes);

}  // namespace quirn::platform
