// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pictures coded as JPEG 2000 (ISO/IEC 15444-1): the files within JPXDecode streams.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/pdf_samples.h"

namespace quirn::platform {

// What the file says of its picture.
struct JPXHeader {
  PDFPixelSize size;
  std::size_t components = 0;  // 1 or 3
};

// Nothing for what is damaged, too large to be decoded here, or has samples of another kind than plain ones of up to 16
// bits, as many of each component as there are pixels.
std::optional<JPXHeader> jpxHeader(std::string_view file);

// Who says what the components are. By its own word a file has gray ones, or red, green and blue (sRGB).
enum class JPXColors { ofFile, ofDocument };

// Decodes it at full size, or at a half, a quarter or an eighth where that is still at least `least`, to samples of 8
// bits. Nothing as above, or if the colours are the file's to state and are others.
std::optional<PDFSamples> decodedJPX(std::string_view file, PDFPixelSize least, JPXColors colors);

}  // namespace quirn::platform
