// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_object_scanner.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quirn::platform {
namespace {

using End = ScannedObject::End;

constexpr int deepestNesting = 200;  // dictionaries and arrays in one object

enum class Class : unsigned char { regular, space, delimiter };

constexpr auto classes = [] {
  std::array<Class, 256> table{};
  for (const char c : {'\0', '\t', '\n', '\f', '\r', ' '}) table[static_cast<unsigned char>(c)] = Class::space;
  for (const char c : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'})
    table[static_cast<unsigned char>(c)] = Class::delimiter;
  return table;
}();

Class classOf(char character) {
  return classes[static_cast<unsigned char>(character)];
}

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

// Thrown through the scanner alone, and caught where it ends.
struct Stop {
  End end;
};

class Scanner {
 public:
  Scanner(std::string_view bytes, const PDFRewriting& rewriting, std::string& text)
      : bytes_(bytes), rewriting_(rewriting), text_(text), begin_(text.size()) {}

  ScannedObject numbered() {
    mayGoOn_ = true;
    return guarded([this] {
      object_.name = {.number = wholeNumber(), .generation = wholeNumber()};
      if (word() != "obj") throw Stop{End::odd};
      while (takeValue()) {
      }
    });
  }

  ScannedObject bare() {
    return guarded([this] {
      while (skipSpace(), at_ < bytes_.size()) {
        if (!takeValue()) throw Stop{End::odd};
      }
      close();
    });
  }

 private:
  template <class Work>
  ScannedObject guarded(const Work& work) {
    try {
      work();
      object_.end = End::complete;
    } catch (const Stop& stop) {
      text_.resize(begin_);
      object_.end = stop.end;
    }
    return object_;
  }

  char peek(std::size_t ahead = 0) const {
    if (at_ + ahead >= bytes_.size()) throw Stop{End::cut};
    return bytes_[at_ + ahead];
  }

  void skipSpace() {
    while (at_ < bytes_.size()) {
      if (bytes_[at_] == '%') {
        while (at_ < bytes_.size() && bytes_[at_] != '\r' && bytes_[at_] != '\n') ++at_;
      } else if (classOf(bytes_[at_]) == Class::space) {
        ++at_;
      } else {
        return;
      }
    }
  }

  // The regular characters from `begin` on, of which those up to here are known to belong to the token.
  std::string_view run(std::size_t begin) {
    while (at_ < bytes_.size() && classOf(bytes_[at_]) == Class::regular) ++at_;
    if (at_ == bytes_.size() && mayGoOn_) throw Stop{End::cut};
    return bytes_.substr(begin, at_ - begin);
  }

  std::string_view word() {
    skipSpace();
    return run(at_);
  }

  int wholeNumber() {
    const std::string_view digits = word();
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || value < 0) throw Stop{End::odd};
    return value;
  }

  void put(std::string_view token) {
    if (text_.size() > begin_ && classOf(text_.back()) == Class::regular && classOf(token.front()) == Class::regular) {
      text_ += ' ';
    }
    text_ += token;
  }

  void countValue() {
    if (depth_ == 0 && ++topValues_ > 1 && integers_ < 2) throw Stop{End::odd};
  }

  // Takes the next token over. False at the end of the object.
  bool takeValue() {
    skipSpace();
    switch (peek()) {
      case '/': takeName(); break;
      case '(': takeLiteral(); break;
      case '<': peek(1) == '<' ? open("<<") : takeHex(); break;
      case '>':
        if (peek(1) != '>') throw Stop{End::odd};
        shut("<<", ">>");
        break;
      case '[': open("["); break;
      case ']': shut("[", "]"); break;
      case ')':
      case '{':
      case '}': throw Stop{End::odd};
      default: return takeWord();
    }
    integers_ = 0;
    return true;
  }

  void open(std::string_view bracket) {
    countValue();
    if (depth_ == deepestNesting) throw Stop{End::odd};
    brackets_[depth_++] = bracket.front();
    at_ += bracket.size();
    text_ += bracket;
  }

  void shut(std::string_view opening, std::string_view bracket) {
    if (depth_ == 0 || brackets_[--depth_] != opening.front()) throw Stop{End::odd};
    at_ += bracket.size();
    text_ += bracket;
  }

  void takeName() {
    const std::size_t begin = at_++;
    const std::string_view name = run(begin);
    if (depth_ == 1 && name == "/Length" && brackets_[0] == '<') return takeLength();
    countValue();
    put(name);
  }

  // Of a stream, or so it seems: held back until that is known.
  void takeLength() {
    length_ = wholeNumber();
    const std::size_t behind = at_;
    skipSpace();
    if (!isDigit(peek())) return static_cast<void>(at_ = behind);
    const PDFReference reference{.number = static_cast<int>(*length_), .generation = wholeNumber()};
    if (word() != "R") throw Stop{End::odd};
    length_ = rewriting_.integerAt(reference);
    if (!length_ || *length_ < 0) throw Stop{End::odd};
  }

  void takeLiteral() {
    const std::size_t begin = at_;
    int open = 0;
    do {
      const char character = peek();
      if (character == '\\') {
        peek(1);
        ++at_;
      } else if (character == '(') {
        ++open;
      } else if (character == ')') {
        --open;
      }
      ++at_;
    } while (open > 0);
    putString(bytes_.substr(begin, at_ - begin));
  }

  void takeHex() {
    const std::size_t begin = at_;
    while (peek() != '>') ++at_;
    ++at_;
    putString(bytes_.substr(begin, at_ - begin));
  }

  void putString(std::string_view token) {
    countValue();
    text_ += rewriting_.stringText ? rewriting_.stringText(decodedString(token)) : token;
  }

  bool takeWord() {
    const std::string_view token = word();
    if (token == "R") return takeReference();
    if (depth_ == 0 && token == "endobj") return close();
    if (depth_ == 0 && token == "stream") return closeDictionary();
    const bool isInteger = std::ranges::all_of(token, &isDigit);
    if (!isInteger && !isOtherValue(token)) throw Stop{End::odd};
    integers_ = isInteger ? integers_ + 1 : 0;
    countValue();
    put(token);
    integerEnds_ = {integerEnds_[1], text_.size()};
    integerSizes_ = {integerSizes_[1], token.size()};
    return true;
  }

  static bool isOtherValue(std::string_view token) {
    return token == "true" || token == "false" || token == "null" ||
           token.find_first_not_of("+-.0123456789") == std::string_view::npos;
  }

  // The two numbers before it are in the text already.
  bool takeReference() {
    if (integers_ < 2) throw Stop{End::odd};
    PDFReference reference;
    const char* const text = text_.data();
    const auto read = [&](std::size_t which, int& value) {
      const char* const end = text + integerEnds_[which];
      return std::from_chars(end - integerSizes_[which], end, value).ec == std::errc();
    };
    if (!read(0, reference.number) || !read(1, reference.generation)) throw Stop{End::odd};
    text_.resize(integerEnds_[0] - integerSizes_[0]);
    const int number = rewriting_.numberOf(reference);
    if (number == 0) {
      put("null");
    } else {
      put(std::to_string(number));
      text_ += " 0 R";
    }
    integers_ = 0;
    if (depth_ == 0) --topValues_;
    return true;
  }

  bool close() {
    if (depth_ != 0 || topValues_ != 1) throw Stop{End::odd};
    // Not of a stream after all.
    if (length_ && text_.ends_with(">>")) text_.insert(text_.size() - 2, " /Length " + std::to_string(*length_));
    return false;
  }

  bool closeDictionary() {
    if (topValues_ != 1 || !text_.ends_with(">>") || !length_) throw Stop{End::odd};
    if (peek() == '\r') ++at_;
    if (peek() != '\n') throw Stop{End::odd};
    object_.isStream = true;
    object_.dataOffset = at_ + 1;
    object_.dataLength = *length_;
    return false;
  }

  std::string_view bytes_;
  const PDFRewriting& rewriting_;
  std::string& text_;
  const std::size_t begin_;
  ScannedObject object_;
  std::size_t at_ = 0;
  bool mayGoOn_ = false;  // the bytes are the beginning of what is there
  std::array<char, deepestNesting> brackets_{};
  std::size_t depth_ = 0;
  int topValues_ = 0;
  int integers_ = 0;  // that stand directly before this place
  // Where the last two words end in the text, and how long they are.
  std::array<std::size_t, 2> integerEnds_{};
  std::array<std::size_t, 2> integerSizes_{};
  std::optional<std::int64_t> length_;
};

int hexValue(char digit) {
  if (isDigit(digit)) return digit - '0';
  const char lower = static_cast<char>(digit | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string decodedHex(std::string_view digits) {
  std::string bytes;
  int high = -1;
  for (const char digit : digits) {
    const int value = hexValue(digit);
    if (value < 0) continue;
    if (high >= 0) bytes += static_cast<char>(high << 4 | value);
    high = high >= 0 ? -1 : value;
  }
  if (high >= 0) bytes += static_cast<char>(high << 4);
  return bytes;
}

// Up to three octal digits from `at` on, which is moved behind them.
char octal(std::string_view text, std::size_t& at) {
  int value = 0;
  for (int i = 0; i < 3 && at < text.size() && text[at] >= '0' && text[at] <= '7'; ++i) {
    value = value * 8 + (text[at++] - '0');
  }
  return static_cast<char>(value);
}

std::string decodedLiteral(std::string_view text) {
  constexpr std::string_view escapes = "nrtbf";
  constexpr std::string_view meanings = "\n\r\t\b\f";
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    const char character = text[at++];
    if (character == '\r') {  // any line end is a line feed
      if (at < text.size() && text[at] == '\n') ++at;
      bytes += '\n';
    } else if (character != '\\' || at == text.size()) {
      bytes += character;
    } else if (text[at] >= '0' && text[at] <= '7') {
      bytes += octal(text, at);
    } else if (text[at] == '\r' || text[at] == '\n') {  // a line that goes on
      at += text.substr(at).starts_with("\r\n") ? 2U : 1U;
    } else {
      const std::size_t escape = escapes.find(text[at]);
      bytes += escape == std::string_view::npos ? text[at] : meanings[escape];
      ++at;
    }
  }
  return bytes;
}

}  // namespace

ScannedObject scanNumberedObject(std::string_view bytes, const PDFRewriting& rewriting, std::string& text) {
  return Scanner(bytes, rewriting, text).numbered();
}

ScannedObject scanBareObject(std::string_view bytes, const PDFRewriting& rewriting, std::string& text) {
  return Scanner(bytes, rewriting, text).bare();
}

std::string decodedString(std::string_view token) {
  const std::string_view inside = token.substr(1, token.size() - 2);
  return token.front() == '(' ? decodedLiteral(inside) : decodedHex(inside);
}

}  // namespace quirn::platform
