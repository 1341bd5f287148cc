// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Annotations and form fields as part of their pages' content.

#pragma once

#include <stop_token>

#include "platform/pdf_document.h"

namespace quirn::platform {

// Draws what a reader shows of every annotation onto its page (ISO 32000-1, 12.5.5), and takes the annotations and the
// form out of the document. Where one has no appearance, it is built from what the annotation or the field says.
// Hidden ones and pop-ups aren't drawn. Links stay, since they lead somewhere without being seen; a border that they
// show becomes content. Ends early when a stop is requested. Throws PDFError.
void flattenAnnotations(PDFDocument& document, const std::stop_token& stop);

}  // namespace quirn::platform
