// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Percent-encoding (RFC 3986, section 2.1), in both directions.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quirn {

// Appends each byte as "%HH".
void appendPercentEncoded(std::string& text, std::string_view bytes);

// All bytes but the unreserved characters of RFC 3986, section 2.3, as "%HH".
std::string percentEncoded(std::string_view bytes);

// Nothing for a "%" without two hex digits behind it, or bytes that are not UTF-8. "+" stays.
std::optional<std::string> percentDecoded(std::string_view text);

}  // namespace quirn
