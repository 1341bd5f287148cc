// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes JSON member by member, in either layout. The caller keeps to the grammar.

#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/json.h"
#include "platform/text_sink.h"

namespace quirn::platform {

class JsonWriter {
 public:
  // Appends to `out`, which must outlive the writer and holds all of it only after finish().
  JsonWriter(std::string& out, JsonLayout layout) : sink_(out), isPretty_(layout == JsonLayout::pretty) {}

  void open(char bracket) {
    beginItem();
    sink_.put(bracket);
    ++depth_;
    isFirst_ = true;
  }

  void close(char bracket) {
    --depth_;
    if (!isFirst_) breakLine();
    sink_.put(bracket);
    isFirst_ = false;
  }

  // As it stands.
  void value(std::string_view text) {
    beginItem();
    sink_.put(text);
  }

  // The string token of the scanner as it stands, or text as a string.
  void key(std::string_view token) {
    value(token);
    endKey();
  }
  void keyText(std::string_view text) {
    stringText(text);
    endKey();
  }
  void stringText(std::string_view text) {
    string_.clear();
    appendJsonString(string_, text);
    value(string_);
  }

  void finish() { sink_.flush(); }
  std::size_t size() const { return sink_.size(); }

 private:
  void beginItem() {
    if (isAfterKey_) {
      isAfterKey_ = false;
    } else if (isFirst_) {
      isFirst_ = false;
      if (depth_ > 0) breakLine();
    } else if (isPretty_ && depth_ <= shallow) {
      sink_.putFrom(separators, 2 + 2 * depth_);
    } else {
      sink_.put(',');
      breakLine();
    }
  }

  void endKey() {
    sink_.put(':');
    if (isPretty_) sink_.put(' ');
    isAfterKey_ = true;
  }

  void breakLine() {
    if (!isPretty_) return;
    sink_.put('\n');
    sink_.fill(2 * depth_, ' ');
  }

  // Levels whose separators are written in one move.
  static constexpr std::size_t shallow = 15;
  static constexpr std::array<char, 32> separators = {',', '\n', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ',
                                                      ' ', ' ',  ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ',
                                                      ' ', ' ',  ' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};

  TextSink sink_;
  std::string string_;
  std::size_t depth_ = 0;
  bool isPretty_;
  bool isFirst_ = true;
  bool isAfterKey_ = false;
};

}  // namespace quirn::platform
