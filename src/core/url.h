// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Uniform resource locators (RFC 3986), as far as requests to Quirn need them. They come from other
// programs and from links that anybody may have written, so nothing here refuses with an error: what
// makes no sense is passed over.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quirn {

struct Url {
  std::string scheme;  // lower case
  std::string host;    // lower case, without user and port; empty if there is none
  std::string path;    // decoded
  // "a=1&b" is a with "1" and b without a value; both decoded.
  std::vector<std::pair<std::string, std::optional<std::string>>> query;
};

// Nothing if `text` begins with no scheme.
std::optional<Url> parseUrl(std::string_view text);

// The location of a file, if that text can be one: a text with a NUL in it would name another file
// than the one that it shows.
std::optional<std::filesystem::path> filePath(const std::string& text);

}  // namespace quirn
