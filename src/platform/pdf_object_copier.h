// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Objects of one document taken over into a new file: what is asked for, and everything that it refers to, each once.
// Nothing recurses along references, so no chain of them is too long.

#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <unordered_map>

#include "platform/pdf_internal.h"
#include "platform/pdf_library.h"
#include "platform/pdf_object_writer.h"
#include "platform/pdf_raw_objects.h"

namespace quirn::platform {

class PDFObjectCopier {
 public:
  // Whether a reference to a page brings it in, or only to those that were assigned a number.
  enum class Pages { all, assigned };

  // All outlive it. The document is as it was opened: what was changed since may be written as it was.
  PDFObjectCopier(const PDFDocument::Internals& source, Pages pages, PDFObjectWriter& writer,
                  const PDFEncryption* encryption = nullptr);

  // From now on the object has this number, and the caller writes it; 0 leaves it out, and references to it are null.
  void assign(QPDFObjGen object, int number) { numbers_[keyOf({object.getObj(), object.getGen()})] = number; }

  // The number of the object in the new file: a new one at its first mention, when it is put in the queue.
  int numberOf(QPDFObjGen object) { return numberOf(PDFReference{object.getObj(), object.getGen()}); }
  // Whether it has one, other than 0.
  bool isCopied(QPDFObjGen object) const;

  // The text of an object, or of a reference to one that is indirect.
  std::string text(QPDFObjectHandle object);
  // The text of a dictionary's entry, with the "/" of its key; empty where it is null.
  std::string entry(const std::string& key, QPDFObjectHandle value);

  // Writes everything in the queue, and what that brings in.
  void drain();

 private:
  static std::uint64_t keyOf(PDFReference reference);
  int numberOf(PDFReference reference);
  void copy(PDFReference reference, int number);
  std::optional<std::int64_t> integerAt(PDFReference reference) const;
  void copyBytes(std::int64_t offset, std::int64_t length);
  void copyParsed(PDFReference reference, int number);
  std::string resolved(QPDFObjectHandle object);
  std::string dictionaryText(QPDFObjectHandle dictionary);

  const PDFDocument::Internals& source_;
  Pages pages_;
  PDFObjectWriter& writer_;
  const PDFEncryption* encryption_;
  PDFRewriting rewriting_;
  // By reference: a number that was freed and taken again is another object under each of its generations.
  std::unordered_map<std::uint64_t, int> numbers_;
  std::deque<std::pair<PDFReference, int>> queue_;
  std::string text_;  // of the object that is being copied
};

}  // namespace quirn::platform
