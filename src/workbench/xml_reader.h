// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tokens of an XML 1.0 document, one at a time, with well-formedness enforced. Nothing is ever
// resolved: an entity is a name that was declared, so no document can make more of itself than it is.
// Declarations inside a document type are skipped over by their quotes and brackets, not checked.

#pragma once

#include <cstddef>
#include <exception>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quirn {

inline constexpr std::size_t xmlDepthLimit = 1000;

// Why text is no XML document, or is not taken.
class XmlError final : public std::exception {
 public:
  enum class Reason { malformed, tooDeep, outputTooLarge };

  XmlError(Reason reason, std::string message) : reason_(reason), message_(std::move(message)) {}
  Reason reason() const { return reason_; }
  // "line 3, column 7: …", columns in characters.
  const std::string& message() const { return message_; }
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  Reason reason_;
  std::string message_;
};

enum class XmlToken {
  declaration,
  documentType,
  instruction,
  comment,
  startTag,
  emptyTag,  // <a/>: no end tag follows
  endTag,
  text,  // never empty
  cdata,
  end
};

struct XmlAttribute {
  std::string_view name;
  std::string_view value;  // as written, references and all
  char quote = '"';
};

class XmlReader {
 public:
  // Checks the characters of the whole text. It must outlive the reader, and its line ends be line
  // feeds. A byte order mark is skipped.
  explicit XmlReader(std::string_view text);

  // Throws XmlError. Nothing may be asked for after `end`.
  XmlToken next();

  // Back to the beginning, for a second pass over a document that has been read to its end: what
  // needs no second look is not checked again.
  void rewind();

  // The whole text of the last token.
  std::string_view raw() const { return text_.substr(start_, at_ - start_); }
  // The name in the last tag, instruction or document type.
  std::string_view name() const { return name_; }
  // Of the last declaration, start tag or empty tag.
  std::span<const XmlAttribute> attributes() const { return attributes_; }
  // How many elements are open; a start tag has opened its own.
  std::size_t depth() const { return open_.size(); }
  std::size_t offset() const { return at_; }

 private:
  char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
  bool startsWith(std::string_view beginning) const { return text_.substr(at_).starts_with(beginning); }
  void expect(std::string_view words);
  bool skipBlanks();
  void skipPast(std::string_view mark, std::string_view what);
  std::string_view scanName();
  std::string_view scanQuoted();

  XmlToken finish();
  XmlToken scanText();
  XmlToken scanBang();
  XmlToken scanComment();
  XmlToken scanInstruction();
  XmlToken scanDeclaration();
  XmlToken scanDocumentType();
  XmlToken scanStartTag();
  XmlToken scanEndTag();
  void scanAttributes();
  void scanAttribute();
  void checkAttributeNames() const;
  void checkReferences(std::string_view text) const;
  void checkReference(std::string_view name) const;
  void scanExternalIdentifier();
  void scanSubset();
  void scanMarkupDeclaration();
  void enter();

  std::size_t offsetOf(std::string_view part) const;
  [[noreturn]] void fail(std::string_view why, XmlError::Reason reason = XmlError::Reason::malformed) const;
  [[noreturn]] void failAt(std::size_t offset, std::string_view why,
                           XmlError::Reason reason = XmlError::Reason::malformed) const;

  std::string_view text_;
  std::size_t first_ = 0;  // behind the byte order mark
  std::size_t at_ = 0;
  std::size_t start_ = 0;
  std::string_view name_;
  std::vector<XmlAttribute> attributes_;
  std::vector<std::string_view> open_;
  std::set<std::string_view> entities_;
  bool hasRoot_ = false;
  bool hasDocumentType_ = false;
  bool isChecked_ = false;            // by a first pass
  bool mayDeclareElsewhere_ = false;  // there is an external subset, which is not read
};

// References to the five predefined entities and to characters become what they stand for; others
// stay as they are written.
std::string decodedXmlText(std::string_view raw);
// The same; literal tabs and line ends become blanks.
std::string decodedXmlAttribute(std::string_view raw);

// The way back: what must not stand there as it is becomes a reference.
std::string escapedXmlText(std::string_view text);
std::string escapedXmlAttribute(std::string_view text);  // for double quotes

bool isXmlName(std::string_view text);
bool isXmlBlank(std::string_view text);
// The first character that no XML document may hold, as the bytes from there; empty if there is none.
std::string_view firstIllegalXmlCharacter(std::string_view text);

}  // namespace quirn
