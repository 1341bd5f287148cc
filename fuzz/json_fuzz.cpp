// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/json.h"
#include "platform/json_format.h"

namespace {

using namespace quirn::platform;

constexpr std::size_t limit = 1 << 22;

std::string formattedOrNothing(std::string_view text, JsonLayout layout) {
  try {
    return formattedJson(text, layout, limit);
  } catch (const JsonError&) {
    return "";
  }
}

void require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

// The two ways agree on what is JSON and on how it looks, and a layout is one of itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string compact = formattedOrNothing(text, JsonLayout::compact);
  try {
    JsonValue value = parsedJson(text);
    require(value.text() == compact);
    value.sortKeys();
    require(parsedJson(value.text()).text() == value.text());
    parsedJson(text, JsonDuplicates::lastValueWins);
  } catch (const JsonError&) {
    require(compact.empty());
  }
  const std::string pretty = formattedOrNothing(text, JsonLayout::pretty);
  if (pretty.empty()) return 0;
  require(formattedOrNothing(pretty, JsonLayout::pretty) == pretty);
  require(formattedOrNothing(pretty, JsonLayout::compact) == compact);
  return 0;
}
