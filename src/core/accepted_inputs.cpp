// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/accepted_inputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace quirn {
namespace {

std::string countWord(std::size_t count) {
  constexpr std::array<std::string_view, 4> words{"No", "One", "Two", "Three"};
  return count < words.size() ? std::string(words[count]) : std::to_string(count);
}

}  // namespace

bool AcceptedInputs::accepts(std::span<const InputFile> inputs) const {
  if (inputs.size() < atLeast || inputs.size() > atMost) return false;
  return std::ranges::all_of(inputs, [this](const InputFile& input) {
    if (input.isDirectory ? folders == Folders::refused : folders == Folders::only) return false;
    return input.isDirectory || !matches || matches(input);
  });
}

std::string AcceptedInputs::description() const {
  if (atMost == 0) return "No input";
  const std::string& noun = atMost == 1 ? singular : plural;
  std::string text;
  if (atLeast == atMost) {
    text = fmt::format("{} {}", countWord(atLeast), noun);
  } else if (atLeast == 0) {
    text = atMost == 1 ? fmt::format("One {} or none", singular) : fmt::format("Any number of {}", plural);
  } else if (atMost == anyNumber) {
    text = fmt::format("{} or more {}", countWord(atLeast), plural);
  } else {
    text = fmt::format("{} to {} {}", countWord(atLeast), atMost, plural);
  }
  if (folders == Folders::allowed) text += atMost == 1 ? " or folder" : " or folders";
  return text;
}

bool hasExtension(const InputFile& input, std::initializer_list<std::string_view> extensions) {
  return std::ranges::find(extensions, input.extension()) != extensions.end();
}

}  // namespace quirn
