// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The library's filter for deflated streams (ISO 32000-2, 7.4.4) with a bound on what the library reads for itself:
// cross-reference and object streams, which it holds in memory whole, however far a few bytes expand.

#pragma once

namespace quirn::platform {

// Thrown through the library, which takes every std::exception for damage of one stream and goes on without the rest of
// it.
struct PDFStreamTooLarge {};

// To be called before the library reads a file. From then on its own reads of streams throw PDFStreamTooLarge beyond
// 256 MiB, and beyond 16 MiB for streams that expand more than two hundred times.
void boundFlateStreams();

}  // namespace quirn::platform
