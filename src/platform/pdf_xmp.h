// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The attributes of a document in its XMP packet (ISO 16684-1), where some readers look for them first.

#pragma once

#include <optional>
#include <string>

#include "platform/pdf_document.h"

namespace quirn::platform {

// The packet with its title, creator, description, subject and keywords replaced by these attributes; what is empty is
// left out. Nothing for bytes in which they can't be found: no UTF-8, or not with the prefixes that XMP is written
// with.
std::optional<std::string> xmpWith(std::string packet, const PDFAttributes& attributes);

}  // namespace quirn::platform
