// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The objects of a document as a graph, for the sources of platform/ alone.

#pragma once

#include <vector>

#include "platform/pdf_library.h"

namespace quirn::platform {

// Every numbered object that the document leads to, each once.
std::vector<QPDFObjectHandle> reachableObjects(QPDF& document);

// Lets one object stand for all that are equal to it, among those that nothing tells apart: streams, fonts and their
// parts, graphics states. What has become unused is no longer reached.
void shareEqualObjects(QPDF& document);

}  // namespace quirn::platform
