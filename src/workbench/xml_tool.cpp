// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/text.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"
#include "workbench/xml_format.h"

namespace quirn {
namespace {

std::string verdict(std::string_view text) {
  if (text.find('\r') != std::string_view::npos) return verdict(withXmlLineEnds(text));
  XmlReader reader(text);
  const XmlOutline outline = xmlOutline(reader);
  return fmt::format("✓ Well-formed XML — {} root, {} top-level children.", outline.rootName, outline.rootChildren);
}

std::string format(std::string_view input, const TextToolOptions& options) {
  const std::string_view text = platform::trimmed(input);
  const std::string mode = options.text("mode", "Pretty");
  try {
    if (mode == "Validate") return verdict(text);
    const XmlLayout layout = mode == "Minify" ? XmlLayout::compact : XmlLayout::pretty;
    return formattedXml(text, layout, outputLimit(text.size()));
  } catch (const XmlError& error) {
    throw asToolError(error, "That isn’t valid XML — " + error.message());
  }
}

}  // namespace

const TextTool& xmlTool() {
  static const TextTool tool{
      .id = "dev.xml",
      .name = "XML Format",
      .shortName = "xml",
      .icon = "chevron.left.forwardslash.chevron.right",
      .aliases = {"xml", "format xml", "minify xml", "validate xml", "prettify xml", "beautify xml"},
      .blurb = "Pretty-print, minify, or validate XML.",
      .inputPlaceholder = "Paste XML…",
      .outputExtension = "xml",
      .fileMatch = {"xml"},
      .controls = {ChoiceControl{"mode", "Mode", {"Pretty", "Minify", "Validate"}, "Pretty"}},
      .sampleInput =
          R"(<catalog><book id="1"><title>Quirn</title></book><book id="2"><title>Palemark</title></book></catalog>)",
      .transform = format,
  };
  return tool;
}

}  // namespace quirn
