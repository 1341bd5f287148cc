// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/refusal.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/text.h"

namespace quirn {
namespace {

std::string lowerFirst(std::string text) {
  if (!text.empty()) text.replace(0, 1, lowerCased(text.substr(0, 1)));
  return text;
}

// The first input that would be refused if it were the only kind there is.
const InputFile* misfit(const AcceptedInputs& accepts, std::span<const InputFile> inputs) {
  AcceptedInputs alone = accepts;
  alone.atLeast = 1;
  alone.atMost = 1;
  const auto found =
      std::ranges::find_if_not(inputs, [&](const InputFile& input) { return alone.accepts({&input, 1}); });
  return found == inputs.end() ? nullptr : &*found;
}

}  // namespace

std::string refusal(const OperationType& type, std::span<const InputFile> inputs) {
  if (!type.isBuilt()) return "Isn’t built yet.";
  if (type.canRun(inputs)) return "";
  const AcceptedInputs& accepts = type.accepts();
  if (accepts.atMost == 0) return "Works without files.";
  const std::string needed = "Needs " + lowerFirst(accepts.description());
  const bool isCountRight = inputs.size() >= accepts.atLeast && inputs.size() <= accepts.atMost;
  const InputFile* const odd = isCountRight ? misfit(accepts, inputs) : nullptr;
  if (odd == nullptr) return needed + ".";
  const std::string name = platform::displayText(odd->fileName());
  return fmt::format("{}; “{}” {}.", needed, name, odd->isDirectory ? "is a folder" : "isn’t one");
}

}  // namespace quirn
