// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Telling from its bytes what a picture or scan is, as far as it has to be told before any library
// looks into it.

#pragma once

#include <cstddef>
#include <span>

namespace quirn {

// Whether this is one whole PNG (ISO/IEC 15948): the signature, chunks from IHDR to IEND with image
// data among them, and nothing cut off. The picture itself is not decoded.
bool isWholePNG(std::span<const std::byte> bytes);

// Whether this begins as a PDF (ISO 32000) does.
bool isPDF(std::span<const std::byte> bytes);

}  // namespace quirn
