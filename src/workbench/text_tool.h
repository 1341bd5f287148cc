// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A text tool: text and options in, text out. Each is one immutable record, beside the function
// that does its work. The workbench, the command line and the catalog read the record; none of them
// knows a tool by name.

#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/operation_category.h"

namespace quirn {

struct ToggleControl {
  std::string key;
  std::string label;
  bool value = false;  // the default, here and in the others
};

struct ChoiceControl {
  std::string key;
  std::string label;
  std::vector<std::string> options;  // a choice's value is the text of its option
  std::string value;
};

struct StepperControl {
  std::string key;
  std::string label;
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
  std::int64_t value = 0;
};

struct FieldControl {
  std::string key;
  std::string label;
  std::string value;
  std::string placeholder;
};

using TextToolControl = std::variant<ToggleControl, ChoiceControl, StepperControl, FieldControl>;

const std::string& keyOf(const TextToolControl& control);

// Every value is text: a toggle "true" or "false", a stepper its decimal digits, a choice or field
// its text.
struct TextToolOptions {
  std::map<std::string, std::string, std::less<>> values;

  // The defaults handed in hold for a key that is missing, and for a number that can't be read.
  std::string text(std::string_view key, std::string_view fallback) const;
  std::int64_t integer(std::string_view key, std::int64_t fallback) const;
  // True only for "true".
  bool boolean(std::string_view key) const;
};

// Why a tool gives no output, as the person reads it.
class TextToolError final : public std::exception {
 public:
  explicit TextToolError(std::string message) : message_(std::move(message)) {}
  const std::string& message() const { return message_; }
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  std::string message_;
};

struct TextTool {
  std::string id;         // "dev.base64", unique
  std::string name;       // "Base64"
  std::string shortName;  // lower case; the base of a saved file's name
  std::string icon;
  OperationCategory category = OperationCategory::dev;
  std::vector<std::string_view> aliases;
  std::string blurb;
  std::string inputPlaceholder = "Paste or type here…";
  std::string outputExtension = "txt";
  bool isGenerator = false;  // ignores its input
  // Works on bytes, so input that is not UTF-8 reaches it as it is. For others it is made UTF-8.
  bool takesBytes = false;
  std::set<std::string> fileMatch;  // lower-case extensions that the tool is suggested for
  std::vector<TextToolControl> controls;
  std::string sampleInput;
  // Output is UTF-8, and so is input. Without side effects; blocks. Throws TextToolError.
  std::function<std::string(std::string_view input, const TextToolOptions& options)> transform;
};

// The values of all controls as they are at first.
TextToolOptions defaultOptions(const TextTool& tool);

}  // namespace quirn
