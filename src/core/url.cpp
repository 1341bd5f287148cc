// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/url.h"

#include <algorithm>
#include <charconv>

#include "core/input_file.h"

namespace quirn {
namespace {

bool isSchemeCharacter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '+' || character == '-' || character == '.';
}

// The text before the first of `ends`, taken off `rest` together with that character.
std::string_view takeUntil(std::string_view& rest, char end) {
  const std::size_t at = rest.find(end);
  const std::string_view taken = rest.substr(0, at);
  rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + 1);
  return taken;
}

// "%20" is a blank; a "%" that begins no such triple stands for itself, and so does "+".
std::string lenientlyDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = text.data() + i + 1;
    const bool isTriple =
        text[i] == '%' && text.size() - i > 2 && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
    decoded += isTriple ? static_cast<char>(byte) : text[i];
    if (isTriple) i += 2;
  }
  return decoded;
}

std::string hostOf(std::string_view authority) {
  if (const std::size_t user = authority.rfind('@'); user != std::string_view::npos) authority.remove_prefix(user + 1);
  return lowerCased(lenientlyDecoded(authority.substr(0, authority.find(':'))));
}

std::pair<std::string, std::optional<std::string>> queryItem(std::string_view item) {
  const std::size_t equals = item.find('=');
  std::string name = lenientlyDecoded(item.substr(0, equals));
  if (equals == std::string_view::npos) return {std::move(name), std::nullopt};
  return {std::move(name), lenientlyDecoded(item.substr(equals + 1))};
}

}  // namespace

std::optional<Url> parseUrl(std::string_view text) {
  const std::size_t colon = text.find(':');
  const std::string_view scheme = text.substr(0, colon);
  if (colon == std::string_view::npos || scheme.empty() || !std::ranges::all_of(scheme, isSchemeCharacter))
    return std::nullopt;
  Url url{.scheme = lowerCased(scheme), .host = {}, .path = {}, .query = {}};
  std::string_view rest = text.substr(colon + 1);
  rest = rest.substr(0, rest.find('#'));
  std::string_view hierarchy = takeUntil(rest, '?');
  if (hierarchy.starts_with("//")) {
    hierarchy.remove_prefix(2);
    const std::size_t pathBegin = std::min(hierarchy.find('/'), hierarchy.size());
    url.host = hostOf(hierarchy.substr(0, pathBegin));
    hierarchy.remove_prefix(pathBegin);
  }
  url.path = lenientlyDecoded(hierarchy);
  while (!rest.empty()) url.query.push_back(queryItem(takeUntil(rest, '&')));
  return url;
}

std::optional<std::filesystem::path> filePath(const std::string& text) {
  if (text.empty() || text.find('\0') != std::string::npos) return std::nullopt;
  return std::filesystem::path(text);
}

}  // namespace quirn
