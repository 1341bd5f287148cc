// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A URL taken apart as RFC 3986 has it.

#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace quirn {

// Views into the text, nothing decoded. What is missing is empty.
struct UrlComponents {
  struct QueryItem {
    std::string_view name;
    std::string_view value;
  };

  std::string_view scheme;
  std::string_view user;
  std::string_view password;
  std::string_view host;  // an IPv6 address with its brackets
  std::string_view port;  // digits
  std::string_view path;
  std::vector<QueryItem> queryItems;
  std::string_view fragment;
};

// Blanks and characters beyond ASCII pass outside the host, as people paste them. Nothing for
// control characters, a port that is no number, a host that can't be one, or a colon in front of
// which no scheme stands.
std::optional<UrlComponents> urlComponents(std::string_view text);

}  // namespace quirn
