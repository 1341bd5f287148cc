// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdint>
#include <cstdlib>
#include <string>

#include "workbench/structured_tools.h"
#include "workbench/xml_format.h"
#include "workbench/xml_to_json.h"

namespace {

using namespace quirn;

void require(bool condition) {
  if (!condition) std::abort();
}

std::string formatted(std::string_view text, XmlLayout layout) {
  return formattedXml(text, layout, 1 << 22);
}

// libxml2 takes what our reader has let through. It knows more of namespaces and encodings, so only
// its end counts, not its answer.
void query(std::string_view text) {
  try {
    TextToolOptions options;
    options.values["path"] = "//*/@*|//text()";
    xpathTool().transform(text, options);
  } catch (const TextToolError&) {
    return;
  }
}

}  // namespace

// A layout is one of itself, and both layouts are of one document.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const std::string compact = formatted(text, XmlLayout::compact);
    const std::string pretty = formatted(text, XmlLayout::pretty);
    require(formatted(pretty, XmlLayout::pretty) == pretty);
    require(formatted(pretty, XmlLayout::compact) == compact);
    jsonFromXml(text).text();
    query(text);
  } catch (const XmlError&) {
    return 0;
  }
  return 0;
}
