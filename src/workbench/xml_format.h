// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// XML laid out anew without a tree. White space that stands between tags alone is layout and is
// replaced; an element with other text of its own, or with xml:space="preserve", keeps its content as
// it is. Tags come out with single blanks; comments, references and CDATA sections as written.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/xml_reader.h"

namespace quirn {

// Pretty is two blanks a level.
enum class XmlLayout { compact, pretty };

// What one pass over a document finds out.
struct XmlOutline {
  std::vector<bool> keepsContent;  // by start tag, in their order
  std::string rootName;
  std::size_t rootChildren = 0;  // a run of text is one; layout is none
};

// Checks the whole document. Throws XmlError.
XmlOutline xmlOutline(XmlReader& reader);

// The text with its line ends made line feeds. Throws XmlError, also for more than `limit` bytes of
// output.
std::string formattedXml(std::string_view text, XmlLayout layout, std::size_t limit);

// XML 1.0, 2.11: \r\n and a lone \r both stand for \n.
std::string withXmlLineEnds(std::string_view text);

}  // namespace quirn
