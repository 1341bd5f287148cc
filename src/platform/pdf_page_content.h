// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a page draws: its content streams and resources, as the sources of platform/ change them. Nothing is decoded and
// encoded again but where streams must be joined.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/pdf_geometry.h"
#include "platform/pdf_library.h"

namespace quirn::platform {

// Content that is longer when decoded is passed on unread.
inline constexpr std::size_t mostContentRead = 256 << 20;  // bytes

// A number as content streams have it: no exponent, no more digits than a reader can tell apart.
std::string contentNumber(double value);
// "a b c d e f cm\n"
std::string concatenation(const PDFMatrix& matrix);
// The operators that draw the object of that name through the matrix.
std::string drawing(const std::string& name, const PDFMatrix& matrix);
// "x y w h re\n"
std::string rectanglePath(const PDFRectangle& rectangle);

QPDFObjectHandle arrayOf(const PDFRectangle& rectangle);
QPDFObjectHandle arrayOf(const PDFMatrix& matrix);
// The identity for what is no array of six numbers.
PDFMatrix matrixOf(QPDFObjectHandle object);

// The decoded bytes of a stream, as far as they can be decoded and go no further than `mostBytes`.
std::string decodedStream(QPDFObjectHandle stream, std::size_t mostBytes = mostContentRead);

// All decoded bytes of a stream; nothing if it is damaged, has a coding that can't be undone here, or is larger.
std::optional<std::string> wholeDecodedStream(QPDFObjectHandle stream, std::size_t mostBytes);

// The streams of a page, in order, where /Contents is one or an array of them.
std::vector<QPDFObjectHandle> contentStreams(QPDFObjectHandle page);

// The resources of a page, own or inherited, as an object that pages can share.
QPDFObjectHandle sharedResources(QPDF& document, const QPDFObjectHandle& page);

// The page's content, its streams joined with line ends between them.
std::string decodedContents(QPDFObjectHandle page);

// A new form of what the page draws, cut to `box`; the page stays as it is. Pages share what they shared.
QPDFObjectHandle formOfPage(QPDF& document, QPDFObjectHandle page, const PDFRectangle& box);

// A form (or an image) of a document, and where a page draws it.
struct PlacedObject {
  QPDFObjectHandle object;
  PDFMatrix matrix;
};
// Draws the objects on top of the page's content, in its initial graphics state whatever state its content ends in.
void drawOnPage(QPDF& document, QPDFObjectHandle page, const std::vector<PlacedObject>& placed);

}  // namespace quirn::platform
