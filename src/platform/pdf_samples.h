// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The pixels of a picture, and fewer of them.

#pragma once

#include <cstddef>
#include <string>

namespace quirn::platform {

struct PDFPixelSize {
  std::size_t width = 0;
  std::size_t height = 0;

  bool operator==(const PDFPixelSize&) const = default;
};

// Interleaved samples of 8 bits, rows from the top without gaps.
struct PDFSamples {
  PDFPixelSize size;
  std::size_t components = 0;
  std::string bytes;
};

// How many old pixels one new one covers.
struct PDFPixelStep {
  double x = 1;
  double y = 1;
};

// Each new pixel is the mean of those that it covers. `size` is at least one pixel.
PDFSamples reduced(PDFSamples samples, PDFPixelSize size);
// The same, where the steps don't end with the old pixels; new pixels beyond these are like the last.
PDFSamples reduced(PDFSamples samples, PDFPixelSize size, PDFPixelStep step);

}  // namespace quirn::platform
