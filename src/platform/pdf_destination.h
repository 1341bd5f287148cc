// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Where the links and bookmarks of a document lead (ISO 32000-2, 12.3.2).

#pragma once

#include "platform/pdf_library.h"

namespace quirn::platform {

// The explicit destination, an array that begins with its page, of an outline item or a link: of its /Dest, or of its
// action where that goes to a place in this document. Names are looked up. Null if there is none.
QPDFObjectHandle destinationOf(QPDF& qpdf, QPDFObjectHandle item);

}  // namespace quirn::platform
