// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/url_components.h"

#include <algorithm>

#include "platform/text.h"
#include "workbench/reference_support.h"

namespace quirn {
namespace {

constexpr auto npos = std::string_view::npos;

bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isSchemePart(char character) {
  return isLetter(character) || isDigits({&character, 1}) || character == '+' || character == '-' || character == '.';
}

bool isControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20 || byte == 0x7F;
}

// What stands before the first `mark`; that and the mark are taken off the text. Without a mark all
// of it stays, and nothing comes back.
std::optional<std::string_view> takeBefore(std::string_view& text, std::string_view mark) {
  const std::size_t at = text.find(mark);
  if (at == npos) return std::nullopt;
  const std::string_view before = text.substr(0, at);
  text.remove_prefix(at + mark.size());
  return before;
}

std::string_view takeFrom(std::string_view& text, char mark) {
  const std::size_t at = text.find(mark);
  if (at == npos) return {};
  const std::string_view after = text.substr(at + 1);
  text = text.substr(0, at);
  return after;
}

std::vector<UrlComponents::QueryItem> queryItems(std::string_view query) {
  std::vector<UrlComponents::QueryItem> items;
  for (std::string_view piece : splitAt(query, '&')) {
    if (piece.empty()) continue;
    const std::string_view value = takeFrom(piece, '=');
    items.push_back({piece, value});
  }
  return items;
}

bool isHost(std::string_view host) {
  const bool isAddress = host.starts_with('[');
  if (isAddress && !host.ends_with(']')) return false;
  return host.find_first_of(isAddress ? " <>\"\\^`{|}" : " :[]<>\"\\^`{|}") == npos;
}

bool readHostAndPort(std::string_view text, UrlComponents& url) {
  const std::size_t bracket = text.starts_with('[') ? text.find(']') : 0;
  if (bracket == npos) return false;
  const std::size_t colon = text.find(':', bracket);
  url.host = text.substr(0, colon);
  url.port = colon == npos ? std::string_view() : text.substr(colon + 1);
  return isHost(url.host) && (url.port.empty() || isDigits(url.port));
}

bool readAuthority(std::string_view text, UrlComponents& url) {
  const std::size_t at = text.rfind('@');
  if (at == npos) return readHostAndPort(text, url);
  url.user = text.substr(0, at);
  url.password = takeFrom(url.user, ':');
  return readHostAndPort(text.substr(at + 1), url);
}

// A colon in the first segment of a path would be read as the end of a scheme (4.2).
bool readScheme(std::string_view& text, UrlComponents& url) {
  const std::size_t colon = text.find(':');
  if (colon == npos || text.find('/') < colon) return true;
  url.scheme = *takeBefore(text, ":");
  return !url.scheme.empty() && isLetter(url.scheme.front()) && std::ranges::all_of(url.scheme, isSchemePart);
}

}  // namespace

std::optional<UrlComponents> urlComponents(std::string_view text) {
  if (std::ranges::any_of(text, isControl) || !platform::isUtf8(text)) return std::nullopt;
  UrlComponents url;
  url.fragment = takeFrom(text, '#');
  url.queryItems = queryItems(takeFrom(text, '?'));
  if (!readScheme(text, url)) return std::nullopt;
  if (text.starts_with("//")) {
    const std::size_t end = std::min(text.find('/', 2), text.size());
    if (!readAuthority(text.substr(2, end - 2), url)) return std::nullopt;
    text.remove_prefix(end);
  }
  url.path = text;
  return url;
}

}  // namespace quirn
