// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// JPEG pictures (ISO/IEC 10918-1) as PDF documents hold them: samples are what the document's colour space says they
// are, of one, three or four components, and are never inverted.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

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

// A picture of more samples than this is left as it is.
inline constexpr std::size_t mostPictureSamples = std::size_t{1} << 28;

// Decodes a picture of `size`, at a half, a quarter or an eighth of it where that is still at least `least`, which
// costs much less. Nothing for one that is damaged, too large or of another size.
std::optional<PDFSamples> decodedJPEG(std::string_view jpeg, PDFPixelSize size, PDFPixelSize least);

// `quality` from 1 to 100. Colour is kept at half the resolution, as photographs commonly have it. Throws
// std::runtime_error.
std::string encodedJPEG(const PDFSamples& samples, int quality);

// Each new pixel is the mean of those that it covers. `size` is at most that of the samples.
PDFSamples reduced(PDFSamples samples, PDFPixelSize size);

}  // namespace quirn::platform
