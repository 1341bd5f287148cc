// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include <algorithm>

#include "platform/text.h"
#include "workbench/http_status_codes.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

std::string reference() {
  std::string text;
  std::string_view heading;
  for (const HttpStatus& status : httpStatusCodes()) {
    if (const auto next = httpStatusClass(status.code); next != heading) {
      text += fmt::format("{}{}", heading.empty() ? "" : "\n\n", next);
      heading = next;
    }
    text += fmt::format("\n  {}  {} — {}", status.code, status.reason, status.description);
  }
  return text;
}

bool isInteger(std::string_view text) {
  return isDigits(text.starts_with('-') ? text.substr(1) : text);
}

std::string lookedUp(std::string_view input, const TextToolOptions& /*options*/) {
  input = platform::trimmed(input);
  if (!isInteger(input)) return reference();
  const auto status = std::ranges::find(httpStatusCodes(), integerIn(input), &HttpStatus::code);
  if (status == httpStatusCodes().end())
    throw TextToolError(fmt::format("Unknown HTTP status code {}.", excerpt(input)));
  return fmt::format("{} {}\n{}\nCategory: {}", status->code, status->reason, status->description,
                     httpStatusClass(status->code));
}

}  // namespace

const TextTool& httpStatusTool() {
  static const TextTool tool{.id = "dev.http-status",
                             .name = "HTTP Status Codes",
                             .shortName = "http",
                             .icon = "globe",
                             .category = OperationCategory::dev,
                             .aliases = {"http", "status code", "http status", "response code", "404", "500"},
                             .blurb = "Look up an HTTP status code, or list the full reference.",
                             .inputPlaceholder = "A status code like 404 — or leave blank to list all…",
                             .sampleInput = "418",
                             .transform = lookedUp};
  return tool;
}

}  // namespace quirn
