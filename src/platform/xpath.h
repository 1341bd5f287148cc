// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// XPath 1.0 over an XML document. Nothing outside of the document is opened.

#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <vector>

namespace quirn::platform {

class XPathError final : public std::exception {
 public:
  enum class Reason { document, expression, tooMuchWork, outputTooLarge };

  XPathError(Reason reason, std::string message) : reason_(reason), message_(std::move(message)) {}
  Reason reason() const { return reason_; }
  const std::string& message() const { return message_; }
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  Reason reason_;
  std::string message_;
};

// The XML of every node found, in the order of the document; a number, text or truth that the
// expression gives stands alone. `document` is UTF-8 whatever it declares, declares no entities and
// is of bounded depth: its reader has seen to that. Prefixes mean what the document makes of them,
// the outermost element first. `limit` is of all results together. Throws XPathError.
std::vector<std::string> xpathResults(const std::string& document, const std::string& expression, std::size_t limit);

}  // namespace quirn::platform
