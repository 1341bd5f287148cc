// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The names that the source gives to members and enumerators, as text, so that a record's keys and
// choices are written once. They stand in the compiler's own name of a function that has the member
// or the enumerator as its template argument.

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace quirn {
namespace detail {

constexpr bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

constexpr bool isIdentifierCharacter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || isDigit(character) ||
         character == '_';
}

// "name" of "&quirn::Record::name".
template <auto Argument>
constexpr std::string_view lastIdentifierOfArgument() {
  std::string_view text = __PRETTY_FUNCTION__;
  text.remove_prefix(text.find("Argument = "));
  text = text.substr(0, text.find_first_of(";]"));
  // "auto_" is called "auto", a word that the language keeps for itself.
  if (text.ends_with('_')) text.remove_suffix(1);
  std::size_t begin = text.size();
  while (begin > 0 && isIdentifierCharacter(text[begin - 1])) --begin;
  return text.substr(begin);
}

inline constexpr std::size_t mostEnumerators = 64;

// A number that no enumerator has shows as a cast, "(quirn::Color)7"; its place stays empty.
template <class Enum, std::size_t... Index>
constexpr auto enumeratorNames(std::index_sequence<Index...>) {
  std::array names{lastIdentifierOfArgument<static_cast<Enum>(Index)>()...};
  for (std::string_view& name : names) {
    if (isDigit(name.front())) name = {};
  }
  return names;
}

template <class Enum>
inline constexpr auto enumeratorNamesOf = enumeratorNames<Enum>(std::make_index_sequence<mostEnumerators>());

}  // namespace detail

// memberName<&HashFilesConfig::algorithm>() is "algorithm".
template <auto Member>
consteval std::string_view memberName() {
  return detail::lastIdentifierOfArgument<Member>();
}

// enumeratorName(HashAlgorithm::sha256) is "sha256". For enumerations without gaps that begin at 0.
template <class Enum>
constexpr std::string_view enumeratorName(Enum value) {
  return detail::enumeratorNamesOf<Enum>.at(static_cast<std::size_t>(value));
}

// The enumerator of that name, if there is one.
template <class Enum>
constexpr std::optional<Enum> enumeratorNamed(std::string_view name) {
  for (std::size_t index = 0; index < detail::mostEnumerators; ++index) {
    if (!name.empty() && detail::enumeratorNamesOf<Enum>[index] == name) return static_cast<Enum>(index);
  }
  return std::nullopt;
}

// How many enumerators there are.
template <class Enum>
constexpr std::size_t enumeratorCount() {
  std::size_t count = 0;
  while (count < detail::mostEnumerators && !detail::enumeratorNamesOf<Enum>[count].empty()) ++count;
  return count;
}

}  // namespace quirn
