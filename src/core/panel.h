// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The settings of an operation, declared once beside its configuration record: an ordered list of
// controls bound to the record's members, and the notes shown with them. The command line, its
// help, the window's panel, validation and the JSON form all read this list.
//
//   struct HashFilesConfig : OperationConfig {
//     HashAlgorithm algorithm = HashAlgorithm::sha256;
//     static Panel panel() {
//       return {choice<&HashFilesConfig::algorithm>("Algorithm", {{HashAlgorithm::sha256,
//       "SHA-256"}, …})};
//     }
//   };

#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "core/reflection.h"
#include "platform/json.h"

namespace quirn {

// A configuration record: a copyable struct whose members have their defaults as initialisers.
struct OperationConfig {
  OperationConfig() = default;
  OperationConfig(const OperationConfig&) = default;
  OperationConfig& operator=(const OperationConfig&) = default;
  virtual ~OperationConfig() = default;
};

// A setting that was refused. The message names what is accepted.
class SettingError final : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Range {
  double lowest = 0;
  double highest = 0;
};

// What the window shows of a list whose rows are a text and a number.
struct ListTexts {
  std::string empty;    // in place of the rows where there are none
  std::string add;      // of the button
  std::string textKey;  // of the columns, in the JSON form
  std::string textLabel;
  std::string numberKey;
  std::string numberLabel;
};

struct Control {
  // A secret is a text that is not shown while it is typed; a new one is asked for twice where a person types it.
  enum class Kind { toggle, choice, stepper, slider, field, list, secret, newSecret };
  struct Option {
    std::string name;   // what scripts write: the enumerator's name
    std::string label;  // what the window shows
  };

  Kind kind = Kind::toggle;
  std::string key;  // the member's name
  std::string label;
  std::vector<Option> options;  // of a choice
  Range legal;                  // of a stepper or slider: what is accepted
  Range suggested;              // what the window's control spans, within `legal`
  std::string unit;
  std::string placeholder;   // of a field, and of the text in a new row of a list
  ListTexts texts;           // of a list
  bool isFromInput = false;  // its value is read from the inputs before a person sees it
  std::function<std::string(const OperationConfig&)> read;
  std::function<void(OperationConfig&, std::string_view)> write;  // throws SettingError
  std::function<bool(const OperationConfig&)> isShown;            // empty: always

  // "sha256, sha1, sha512, md5", "a whole number from 1 to 50", …
  std::string accepted() const;

  // See OperationType::configurationFor().
  Control fromInput() && {
    isFromInput = true;
    return std::move(*this);
  }

  template <class Config>
  Control shownWhen(bool (*condition)(const Config&)) && {
    isShown = [condition](const OperationConfig& config) { return condition(static_cast<const Config&>(config)); };
    return std::move(*this);
  }
};

// A sentence shown between the controls.
struct Note {
  std::string text;
  std::function<bool(const OperationConfig&)> isShown = {};  // empty: always

  template <class Config>
  Note shownWhen(bool (*condition)(const Config&)) && {
    isShown = [condition](const OperationConfig& config) { return condition(static_cast<const Config&>(config)); };
    return std::move(*this);
  }
};

// What the program has found out about the inputs and shows between the controls, as "12 pages". Nobody sets it.
struct Fact {
  std::string key;  // the member's name
  std::function<std::string(const OperationConfig&)> text;
  std::function<std::string(const OperationConfig&)> read;
  std::function<void(OperationConfig&, std::string_view)> write;  // throws SettingError
};

class Panel {
 public:
  using Item = std::variant<Control, Note, Fact>;

  Panel() = default;
  Panel(std::initializer_list<Item> items) : items_(items) {}

  const std::vector<Item>& items() const { return items_; }
  std::vector<Control> controls() const;
  std::vector<std::string> notes() const;
  std::vector<Fact> facts() const;
  // Whether some of it is read from the inputs.
  bool isFromInput() const;

  // Sets one member from text. `config` is of the record that declared this panel. Throws
  // SettingError for an unknown key or a value that is not accepted.
  void set(OperationConfig& config, std::string_view key, std::string_view value) const;

  // The same for what was found out about the inputs, facts included.
  void restore(OperationConfig& config, std::string_view key, std::string_view value) const;

  // The record as an object of its keys.
  platform::JsonObject values(const OperationConfig& config) const;

 private:
  std::vector<Item> items_;
};

namespace detail {

template <class>
struct MemberTypes;
template <class Config, class Value>
struct MemberTypes<Value Config::*> {
  using ConfigType = Config;
  using ValueType = Value;
};
template <auto Member>
using ConfigOf = typename MemberTypes<decltype(Member)>::ConfigType;
template <auto Member>
using ValueOf = typename MemberTypes<decltype(Member)>::ValueType;

// A control bound to a member through two functions between its value and text. `parse` gives
// nothing for text that is not accepted.
template <auto Member, class Format, class Parse>
Control bound(Control::Kind kind, std::string label, const Format& format, const Parse& parse) {
  using Config = ConfigOf<Member>;
  Control control;
  control.kind = kind;
  control.key = memberName<Member>();
  control.label = std::move(label);
  control.read = [format](const OperationConfig& config) { return format(static_cast<const Config&>(config).*Member); };
  control.write = [parse](OperationConfig& config, std::string_view text) {
    const auto value = parse(text);
    if (!value) throw SettingError(std::string(text));
    static_cast<Config&>(config).*Member = *value;
  };
  return control;
}

std::string formatNumber(double value);
std::optional<std::int64_t> parseInteger(std::string_view text, Range legal);
std::optional<double> parseNumber(std::string_view text, Range legal);

}  // namespace detail

template <auto Member>
Control toggle(std::string label) {
  static_assert(std::is_same_v<detail::ValueOf<Member>, bool>);
  return detail::bound<Member>(
      Control::Kind::toggle, std::move(label), [](bool value) { return std::string(value ? "true" : "false"); },
      [](std::string_view text) -> std::optional<bool> {
        if (text != "true" && text != "false") return std::nullopt;
        return text == "true";
      });
}

// `options` pair every enumerator that may be chosen with its label.
template <auto Member>
Control choice(std::string label, std::vector<std::pair<detail::ValueOf<Member>, std::string>> options) {
  using Enum = detail::ValueOf<Member>;
  std::vector<Enum> values;
  std::vector<Control::Option> named;
  for (auto& [value, optionLabel] : options) {
    values.push_back(value);
    named.push_back({std::string(enumeratorName(value)), std::move(optionLabel)});
  }
  Control control = detail::bound<Member>(
      Control::Kind::choice, std::move(label), [](Enum value) { return std::string(enumeratorName(value)); },
      [values](std::string_view text) -> std::optional<Enum> {
        for (const Enum value : values) {
          if (enumeratorName(value) == text) return value;
        }
        return std::nullopt;
      });
  control.options = std::move(named);
  return control;
}

struct NumberBounds {
  Range legal;
  std::optional<Range> suggested;  // without it, `legal`
  std::string unit;
};

// A whole number.
template <auto Member>
Control stepper(std::string label, NumberBounds bounds) {
  using Integer = detail::ValueOf<Member>;
  static_assert(std::is_integral_v<Integer>);
  Control control = detail::bound<Member>(
      Control::Kind::stepper, std::move(label), [](Integer value) { return std::to_string(value); },
      [legal = bounds.legal](std::string_view text) -> std::optional<Integer> {
        const auto value = detail::parseInteger(text, legal);
        return value ? std::optional(static_cast<Integer>(*value)) : std::nullopt;
      });
  control.legal = bounds.legal;
  control.suggested = bounds.suggested.value_or(bounds.legal);
  control.unit = std::move(bounds.unit);
  return control;
}

// A number with a fraction.
template <auto Member>
Control slider(std::string label, NumberBounds bounds) {
  static_assert(std::is_same_v<detail::ValueOf<Member>, double>);
  Control control =
      detail::bound<Member>(Control::Kind::slider, std::move(label), &detail::formatNumber,
                            [legal = bounds.legal](std::string_view text) { return detail::parseNumber(text, legal); });
  control.legal = bounds.legal;
  control.suggested = bounds.suggested.value_or(bounds.legal);
  control.unit = std::move(bounds.unit);
  return control;
}

namespace detail {

template <auto Member>
Control boundText(Control::Kind kind, std::string label) {
  static_assert(std::is_same_v<ValueOf<Member>, std::string>);
  return bound<Member>(
      kind, std::move(label), [](const std::string& value) { return value; },
      [](std::string_view text) { return std::optional(std::string(text)); });
}

}  // namespace detail

// Rows of a text and a number. The text form is theirs: `format` gives an array of objects in JSON, `parse` takes that
// and what else is easily written, and gives nothing for text that is not accepted.
template <auto Member>
Control list(std::string label, std::string placeholder, ListTexts texts,
             std::string (*format)(const detail::ValueOf<Member>&),
             std::optional<detail::ValueOf<Member>> (*parse)(std::string_view)) {
  Control control = detail::bound<Member>(Control::Kind::list, std::move(label), format, parse);
  control.placeholder = std::move(placeholder);
  control.texts = std::move(texts);
  return control;
}

// A count: "1 page", "12 pages".
template <auto Member>
Fact countFact(std::string singular, std::string plural) {
  using Count = detail::ValueOf<Member>;
  static_assert(std::is_integral_v<Count>);
  const Range any{0, std::numeric_limits<Count>::max()};
  Control control = stepper<Member>({}, {.legal = any});
  return {.key = control.key,
          .text =
              [read = control.read, singular = std::move(singular), plural = std::move(plural)](const auto& config) {
                const std::string count = read(config);
                return count + " " + (count == "1" ? singular : plural);
              },
          .read = control.read,
          .write = control.write};
}

template <auto Member>
Control field(std::string label, std::string placeholder = {}) {
  Control control = detail::boundText<Member>(Control::Kind::field, std::move(label));
  control.placeholder = std::move(placeholder);
  return control;
}

// A password that exists already.
template <auto Member>
Control secret(std::string label) {
  return detail::boundText<Member>(Control::Kind::secret, std::move(label));
}

// A password that is chosen here.
template <auto Member>
Control newSecret(std::string label) {
  return detail::boundText<Member>(Control::Kind::newSecret, std::move(label));
}

}  // namespace quirn
