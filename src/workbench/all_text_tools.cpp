// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/all_text_tools.h"

#include <algorithm>
#include <array>

#include "workbench/backslash_tool.h"
#include "workbench/base32_tool.h"
#include "workbench/base64_tool.h"
#include "workbench/case_tool.h"
#include "workbench/csv_escape_tool.h"
#include "workbench/hash_tools.h"
#include "workbench/hex_bytes_tool.h"
#include "workbench/js_escape_tool.h"
#include "workbench/lorem_tool.h"
#include "workbench/markup_escape_tools.h"
#include "workbench/nano_id_tool.h"
#include "workbench/number_base_tool.h"
#include "workbench/password_tool.h"
#include "workbench/punycode_tool.h"
#include "workbench/quoted_printable_tool.h"
#include "workbench/reference_tools.h"
#include "workbench/slug_tool.h"
#include "workbench/sql_escape_tool.h"
#include "workbench/structured_tools.h"
#include "workbench/ulid_tool.h"
#include "workbench/unicode_escape_tool.h"
#include "workbench/url_encode_tool.h"
#include "workbench/uuid_tool.h"

namespace quirn {

std::span<const TextTool* const> allTextTools() {
  static const std::array tools{
      &uuidTool(),          &passwordTool(),      &base64Tool(),      &caseTool(),
      &jsonTool(),          &slugTool(),          &xmlTool(),         &xmlJsonTool(),
      &xpathTool(),         &jsonPathTool(),      &urlEncodeTool(),   &htmlEscapeTool(),
      &xmlEscapeTool(),     &jsEscapeTool(),      &sqlEscapeTool(),   &csvEscapeTool(),
      &backslashTool(),     &unicodeEscapeTool(), &numberBaseTool(),  &hexBytesTool(),
      &hashTool(),          &hmacTool(),          &punycodeTool(),    &quotedPrintableTool(),
      &base32Tool(),        &nanoIDTool(),        &ulidTool(),        &loremTool(),
      &jwtTool(),           &regexTool(),         &queryStringTool(), &urlParserTool(),
      &ipCalculatorTool(),  &httpStatusTool(),    &userAgentTool(),   &colorConverterTool(),
      &colorContrastTool(), &gradientTool(),      &timestampTool(),   &timeZoneTool(),
      &dateMathTool(),      &unitTool(),          &cronTool(),
  };
  return tools;
}

const TextTool* textToolByID(std::string_view id) {
  const auto tools = allTextTools();
  const auto found = std::ranges::find(tools, id, &TextTool::id);
  return found == tools.end() ? nullptr : *found;
}

}  // namespace quirn
