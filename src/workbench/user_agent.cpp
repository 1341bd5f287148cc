// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/user_agent.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

#include "core/input_file.h"

namespace quirn {
namespace {

constexpr std::string_view dotted = "0123456789.";
constexpr std::string_view underscored = "0123456789_";

using Texts = std::initializer_list<std::string_view>;

// Header and texts are in lower case throughout.
bool holdsAny(std::string_view header, Texts texts) {
  return std::ranges::any_of(texts, [&](auto text) { return header.find(text) != std::string_view::npos; });
}

// The characters after the first place where `mark` stands before at least one of them.
std::optional<std::string_view> versionAfter(std::string_view header, std::string_view mark,
                                             std::string_view characters) {
  std::size_t at = 0;
  while ((at = header.find(mark, at)) != std::string_view::npos) {
    at += mark.size();
    const std::string_view rest = header.substr(at);
    const std::string_view version = rest.substr(0, rest.find_first_not_of(characters));
    if (!version.empty()) return version;
  }
  return std::nullopt;
}

// That of the mark which comes first in the header. A version is a view into the header.
std::optional<std::string_view> versionAfterAny(std::string_view header, Texts marks) {
  std::optional<std::string_view> first;
  for (const std::string_view mark : marks) {
    const auto found = versionAfter(header, mark, dotted);
    if (found && (!first || found->data() < first->data())) first = found;
  }
  return first;
}

// "17_5_1" as "17.5.1".
std::string withDots(std::string_view version) {
  std::string text(version);
  std::ranges::replace(text, '_', '.');
  return text;
}

NameAndVersion browserIn(std::string_view header) {
  struct Rule {
    std::string_view name;
    Texts marks;
  };
  // Most browsers also name those that they want to be taken for, so the order decides.
  const Texts edge = {"edge/", "edga/", "edgios/", "edg/"};
  const Texts opera = {"opr/"}, oldOpera = {"opera/", "opera "};
  const Texts firefox = {"firefox/"}, chrome = {"chrome/"};
  for (const Rule& rule : {Rule{"Edge", edge}, Rule{"Opera", opera}, Rule{"Opera", oldOpera}, Rule{"Firefox", firefox},
                           Rule{"Chrome", chrome}}) {
    if (const auto version = versionAfterAny(header, rule.marks))
      return {std::string(rule.name), std::string(*version)};
  }
  if (!holdsAny(header, {"safari"})) return {"Unknown", ""};
  return {"Safari", std::string(versionAfter(header, "version/", dotted).value_or(""))};
}

// Windows by the name that people know its version under.
std::string marketedVersion(std::string_view version) {
  if (version == "10.0") return "10/11";
  if (version == "6.3") return "8.1";
  if (version == "6.2") return "8";
  if (version == "6.1") return "7";
  return std::string(version);
}

NameAndVersion systemIn(std::string_view header) {
  if (const auto version = versionAfter(header, "windows nt ", dotted)) return {"Windows", marketedVersion(*version)};
  if (holdsAny(header, {"iphone", "ipad", "ipod"}))
    return {"iOS", withDots(versionAfter(header, "os ", underscored).value_or(""))};
  if (const auto version = versionAfter(header, "mac os x ", underscored)) return {"macOS", withDots(*version)};
  if (const auto version = versionAfter(header, "android ", dotted)) return {"Android", std::string(*version)};
  return {holdsAny(header, {"linux"}) ? "Linux" : "Unknown", ""};
}

std::string deviceIn(std::string_view header) {
  if (holdsAny(header, {"bot", "spider", "crawler"})) return "Bot / crawler";
  if (holdsAny(header, {"ipad"})) return "Tablet";
  if (holdsAny(header, {"tablet"}) && holdsAny(header, {"android"})) return "Tablet";
  return holdsAny(header, {"mobi", "iphone", "ipod"}) ? "Mobile" : "Desktop";
}

}  // namespace

UserAgent userAgentIn(std::string_view header) {
  const std::string lower = lowerCased(header);
  return {browserIn(lower), systemIn(lower), deviceIn(lower)};
}

}  // namespace quirn
