// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/panel.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "core/nearest_name.h"

namespace quirn {
namespace {

template <class Number>
std::optional<Number> parseWhole(std::string_view text, Range legal) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  const auto asDouble = static_cast<double>(value);
  // Written so that "nan" is refused too.
  if (!whole || !(asDouble >= legal.lowest && asDouble <= legal.highest)) return std::nullopt;
  return value;
}

std::vector<std::string> optionNames(const Control& control) {
  std::vector<std::string> names;
  for (const Control::Option& option : control.options) names.push_back(option.name);
  return names;
}

template <class Wanted>
auto itemsOf(const std::vector<Panel::Item>& items) {
  std::vector<Wanted> found;
  for (const Panel::Item& item : items) {
    if (const auto* wanted = std::get_if<Wanted>(&item)) found.push_back(*wanted);
  }
  return found;
}

[[noreturn]] void refuseKey(const std::vector<Control>& controls, std::string_view key) {
  if (controls.empty()) throw SettingError(fmt::format("There is no setting “{}”: the operation has none.", key));
  std::vector<std::string> keys;
  for (const Control& control : controls) keys.push_back(control.key);
  throw SettingError(
      fmt::format("There is no setting “{}”. Accepted: {}.{}", key, fmt::join(keys, ", "), didYouMean(key, keys)));
}

}  // namespace

namespace detail {

std::string formatNumber(double value) {
  return fmt::format("{}", value);
}

std::optional<std::int64_t> parseInteger(std::string_view text, Range legal) {
  return parseWhole<std::int64_t>(text, legal);
}

std::optional<double> parseNumber(std::string_view text, Range legal) {
  return parseWhole<double>(text, legal);
}

}  // namespace detail

std::string Control::accepted() const {
  switch (kind) {
    case Kind::toggle: return "true, false";
    case Kind::choice: return fmt::format("{}", fmt::join(optionNames(*this), ", "));
    case Kind::stepper: return fmt::format("a whole number from {} to {}", legal.lowest, legal.highest);
    case Kind::slider: return fmt::format("a number from {} to {}", legal.lowest, legal.highest);
    case Kind::list:
      return fmt::format(
          "“12 Title; 30 Another”, with {} and {}, or an array of objects in JSON with the keys {} and {}",
          texts.numberKey, texts.textKey, texts.numberKey, texts.textKey);
    case Kind::field:
    case Kind::secret:
    case Kind::newSecret: break;
  }
  return "any text";
}

std::vector<Control> Panel::controls() const {
  return itemsOf<Control>(items_);
}

std::vector<std::string> Panel::notes() const {
  std::vector<std::string> texts;
  for (Note& note : itemsOf<Note>(items_)) texts.push_back(std::move(note.text));
  return texts;
}

std::vector<Fact> Panel::facts() const {
  return itemsOf<Fact>(items_);
}

bool Panel::isFromInput() const {
  return !facts().empty() || std::ranges::any_of(controls(), &Control::isFromInput);
}

void Panel::restore(OperationConfig& config, std::string_view key, std::string_view value) const {
  for (const Fact& fact : facts()) {
    if (fact.key == key) return fact.write(config, value);
  }
  set(config, key, value);
}

void Panel::set(OperationConfig& config, std::string_view key, std::string_view value) const {
  for (const Control& control : controls()) {
    if (control.key != key) continue;
    try {
      control.write(config, value);
      return;
    } catch (const SettingError&) {
      throw SettingError(fmt::format("“{}” is not accepted for {}. Accepted: {}.{}", value, key, control.accepted(),
                                     didYouMean(value, optionNames(control))));
    }
  }
  refuseKey(controls(), key);
}

platform::JsonObject Panel::values(const OperationConfig& config) const {
  platform::JsonObject object;
  for (const Control& control : controls()) {
    const std::string text = control.read(config);
    switch (control.kind) {
      case Control::Kind::toggle: object.emplace_back(control.key, text == "true"); break;
      case Control::Kind::stepper:
      case Control::Kind::slider: object.emplace_back(control.key, platform::JsonNumber{text}); break;
      case Control::Kind::list: object.emplace_back(control.key, platform::parsedJson(text)); break;
      case Control::Kind::choice:
      case Control::Kind::field:
      case Control::Kind::secret:
      case Control::Kind::newSecret: object.emplace_back(control.key, text); break;
    }
  }
  return object;
}

}  // namespace quirn
