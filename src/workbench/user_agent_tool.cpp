// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/text.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"
#include "workbench/user_agent.h"

namespace quirn {
namespace {

std::string named(const NameAndVersion& part) {
  return part.version.empty() ? part.name : part.name + " " + part.version;
}

std::string identified(std::string_view input, const TextToolOptions& /*options*/) {
  input = platform::trimmed(input);
  if (input.empty()) return "";
  const UserAgent agent = userAgentIn(input);
  return fmt::format("Browser: {}\nOS:      {}\nDevice:  {}", named(agent.browser), named(agent.system), agent.device);
}

}  // namespace

const TextTool& userAgentTool() {
  static const TextTool tool{.id = "dev.user-agent",
                             .name = "User Agent Parser",
                             .shortName = "ua",
                             .icon = "person.crop.square",
                             .category = OperationCategory::dev,
                             .aliases = {"user agent", "useragent", "ua", "browser", "parse ua"},
                             .blurb = "Identify the browser, OS, and device from a User-Agent string.",
                             .inputPlaceholder = "Paste a User-Agent string…",
                             .sampleInput =
                                 "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 (KHTML, "
                                 "like Gecko) Version/17.0 Safari/605.1.15",
                             .transform = identified};
  return tool;
}

}  // namespace quirn
