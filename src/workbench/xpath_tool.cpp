// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/text.h"
#include "platform/xpath.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"
#include "workbench/xml_format.h"

namespace quirn {
namespace {

// A tag with its references to declared entities made text, so that nothing can resolve them.
std::string inertTag(const XmlReader& reader, std::string_view end) {
  std::string tag = fmt::format("<{}", reader.name());
  for (const XmlAttribute& attribute : reader.attributes()) {
    tag += fmt::format(" {}=\"{}\"", attribute.name, escapedXmlAttribute(decodedXmlAttribute(attribute.value)));
  }
  return tag.append(end);
}

// The document without its declarations: of entities, which could explode, and of everything else.
// With an external subset that nobody loads, references in text stay references to the unknown.
std::string inertDocument(std::string_view text) {
  std::string lines = withXmlLineEnds(text);
  std::string inert;
  bool hasDocumentType = false;
  XmlReader reader(lines);
  for (XmlToken token = reader.next(); token != XmlToken::end; token = reader.next()) {
    if (token == XmlToken::documentType) {
      hasDocumentType = true;
      inert += fmt::format("<!DOCTYPE {} SYSTEM \"\">", reader.name());
    } else if (hasDocumentType && token == XmlToken::startTag) {
      inert += inertTag(reader, ">");
    } else if (hasDocumentType && token == XmlToken::emptyTag) {
      inert += inertTag(reader, "/>");
    } else {
      inert += reader.raw();
    }
  }
  return inert;
}

std::string listed(const std::vector<std::string>& results) {
  if (results.empty()) return "No matches.";
  std::string out = matchHeading(results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (i > 0) out += '\n';
    out += fmt::format("[{}] {}", i, platform::trimmed(results[i]));
  }
  return out;
}

TextToolError asToolError(const platform::XPathError& error) {
  using Reason = platform::XPathError::Reason;
  switch (error.reason()) {
    case Reason::document: return TextToolError("Invalid XML.");
    case Reason::expression: return TextToolError("That isn’t a valid XPath expression — " + error.message());
    case Reason::outputTooLarge: failForSize();
    default: return TextToolError("This expression takes too long on this document — try a simpler one.");
  }
}

std::string query(std::string_view input, const TextToolOptions& options) {
  const std::string path = options.text("path", "//book/title");
  const std::string_view expression = platform::trimmed(path);
  if (expression.empty()) throw TextToolError("Enter an XPath expression.");
  try {
    const std::string document = inertDocument(platform::trimmed(input));
    return listed(platform::xpathResults(document, std::string(expression), outputLimit(input.size())));
  } catch (const XmlError& error) {
    throw quirn::asToolError(error, "Invalid XML.");
  } catch (const platform::XPathError& error) {
    throw asToolError(error);
  }
}

}  // namespace

const TextTool& xpathTool() {
  static const TextTool tool{
      .id = "dev.xpath",
      .name = "XPath Tester",
      .shortName = "xpath",
      .icon = "magnifyingglass",
      .aliases = {"xpath", "xml query", "query xml", "xpath tester"},
      .blurb = "Run an XPath query over XML and see every matching node.",
      .inputPlaceholder = "Paste XML…",
      .fileMatch = {"xml"},
      .controls = {FieldControl{"path", "XPath", "//book/title", "//node"}},
      .sampleInput = "<catalog><book><title>Quirn</title></book><book><title>Palemark</title></book></catalog>",
      .transform = query,
  };
  return tool;
}

}  // namespace quirn
