// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_field.h"

#include <utility>

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

std::string textOf(Object object) {
  if (object.isString()) return object.getUTF8Value();
  return object.isName() ? object.getName().substr(1) : std::string();
}

Object keyOf(Object object, const std::string& key) {
  return object.isDictionary() ? object.getKey(key) : Object::newNull();
}

// The value that is stored and the text that is shown, where an option is a pair.
std::pair<std::string, std::string> optionOf(Object option) {
  if (!option.isArray() || option.getArrayNItems() < 2) return {textOf(option), textOf(option)};
  return {textOf(option.getArrayItem(0)), textOf(option.getArrayItem(1))};
}

std::vector<Object> listOf(Object value) {
  if (value.isNull()) return {};
  return value.isArray() ? value.getArrayAsVector() : std::vector<Object>{value};
}

}  // namespace

PDFField::PDFField(Object widget, Object form) : widget_(std::move(widget)), form_(std::move(form)) {
  entry("/Ff").getValueAsInt(flags_);
}

PDFField::Kind PDFField::kind() const {
  Object type = entry("/FT");
  if (type.isNameAndEquals("/Tx")) return Kind::text;
  if (type.isNameAndEquals("/Ch")) return Kind::choice;
  if (!type.isNameAndEquals("/Btn")) return Kind::other;
  if (has(1 << 16)) return Kind::push;
  return has(1 << 15) ? Kind::radio : Kind::check;
}

int PDFField::combLength() const {
  constexpr long long longest = 1000;
  long long length = 0;
  entry("/MaxLen").getValueAsInt(length);
  const bool isComb = has(1 << 24) && !isMultiline() && !isPassword() && length > 0 && length <= longest;
  return isComb ? static_cast<int>(length) : 0;
}

std::vector<std::string> PDFField::shownValues() const {
  std::vector<std::string> values;
  Object value = entry("/V");
  if (value.isStream()) return values;
  for (const Object& item : listOf(value)) {
    const std::string text = textOf(item);
    values.push_back(kind() == Kind::choice ? shownOption(text) : text);
  }
  return values;
}

std::vector<std::string> PDFField::options() const {
  std::vector<std::string> texts;
  for (const Object& option : listOf(entry("/Opt"))) texts.push_back(optionOf(option).second);
  return texts;
}

std::string PDFField::shownOption(const std::string& value) const {
  for (const Object& option : listOf(entry("/Opt"))) {
    const auto [stored, shown] = optionOf(option);
    if (stored == value) return shown;
  }
  return value;
}

bool PDFField::isOn() const {
  Object state = keyOf(widget_, "/AS");
  if (!state.isName()) state = entry("/V");
  return state.isName() && state.getName() != "/Off";
}

Object PDFField::entry(const std::string& key) const {
  constexpr int deepestField = 100;
  Object node = widget_;
  for (int level = 0; node.isDictionary() && level < deepestField; ++level) {
    if (node.hasKey(key)) return node.getKey(key);
    node = node.getKey("/Parent");
  }
  return keyOf(form_, key);
}

Object PDFField::characteristic(const std::string& key) const {
  return keyOf(keyOf(widget_, "/MK"), key);
}

Object PDFField::fonts() const {
  return keyOf(keyOf(form_, "/DR"), "/Font");
}

std::string PDFField::defaultAppearance() const {
  Object appearance = entry("/DA");
  return appearance.isString() ? appearance.getStringValue() : std::string();
}

}  // namespace quirn::platform
