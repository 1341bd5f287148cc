// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The image objects of a document (ISO 32000-1, 8.9.5) and the pictures in them, for the sources of platform/ alone.

#pragma once

#include <optional>

#include "platform/pdf_library.h"
#include "platform/pdf_screen_image.h"

namespace quirn::platform {

bool isImage(QPDFObjectHandle stream);

// The picture of an image. Nothing for one that can't be decoded here, that has its own idea of what its samples mean
// (colour keys, mattes, colours of unusual spaces), that is a stencil, or that is too small to be worth it.
std::optional<PDFStoredImage> storedImage(QPDFObjectHandle image);

// Puts another picture in its place.
void replacePicture(QPDFObjectHandle image, const PDFScreenImage& picture);

}  // namespace quirn::platform
