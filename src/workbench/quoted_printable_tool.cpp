// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/quoted_printable_tool.h"

#include "workbench/hex.h"
#include "workbench/rewriting.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

constexpr std::size_t longestLine = 76;  // the "=" of a soft break comes on top

constexpr ByteSet literalBytes = bytesWhere(
    [](unsigned char byte) { return byte == ' ' || byte == '\t' || (byte >= 33 && byte <= 126 && byte != '='); });

std::string encoded(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 16);
  std::size_t column = 0;
  for (const char byte : bytes) {
    const bool isLiteral = literalBytes[static_cast<unsigned char>(byte)];
    const std::size_t length = isLiteral ? 1 : 3;
    if (column + length > longestLine) {
      text += "=\r\n";
      column = 0;
    }
    column += length;
    if (isLiteral) {
      text += byte;
    } else {
      appendHexEscape(text, "=", byte);
    }
  }
  return text;
}

std::size_t appendDecoded(std::string& bytes, std::string_view text, std::size_t at) {
  const std::string_view behind = text.substr(at + 1);
  if (behind.starts_with('\n')) return at + 2;
  if (behind.starts_with("\r\n")) return at + 3;
  const auto byte = hexByteAt(text, at + 1);
  if (!byte) throw TextToolError("Malformed =HH escape in Quoted-Printable input.");
  bytes += *byte;
  return at + 3;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  if (!isMode(options, "Decode")) return encoded(input);
  static constexpr ByteSet special = bytesOf("=");
  return textOf(rewritten(input, special, &appendDecoded), "Decoded bytes are not valid UTF-8 text.");
}

}  // namespace

const TextTool& quotedPrintableTool() {
  static const TextTool tool{
      .id = "dev.quoted-printable",
      .name = "Quoted-Printable",
      .shortName = "qp",
      .icon = "envelope",
      .aliases = {"quoted-printable", "qp", "rfc 2045", "mime", "=hh"},
      .blurb = "Encode or decode Quoted-Printable, the MIME transfer encoding used in email.",
      .takesBytes = true,
      .controls = {modeControl("Encode", "Decode")},
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
