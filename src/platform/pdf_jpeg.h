// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// JPEG pictures (ISO/IEC 10918-1) as PDF documents hold them: samples are what the document's colour space says they
// are, of one, three or four components, and are never inverted.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/pdf_samples.h"

namespace quirn::platform {

// A picture of more samples than this is left as it is.
inline constexpr std::size_t mostPictureSamples = std::size_t{1} << 28;

// Decodes a picture of `size`, at a half, a quarter or an eighth of it where that is still plenty for `least`, which
// costs much less. Nothing for one that is damaged, too large or of another size.
std::optional<PDFSamples> decodedJPEG(std::string_view jpeg, PDFPixelSize size, PDFPixelSize least);

// `quality` from 1 to 100. Colour is kept at half the resolution, as photographs commonly have it. Throws
// std::runtime_error.
std::string encodedJPEG(const PDFSamples& samples, int quality);

// A picture of `size` with fewer pixels, at most `most` of them, coded anew: its brightness and colours are taken from
// file to file as they are. Nothing for one that is damaged or too large, has another size, or has its colours in
// another form than brightness and two differences. Throws as above.
struct PDFReducedJPEG {
  std::string jpeg;
  PDFPixelSize size;
};
std::optional<PDFReducedJPEG> reducedJPEG(std::string_view jpeg, PDFPixelSize size, PDFPixelSize most, int quality);

}  // namespace quirn::platform
