// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A PDF document (ISO 32000) as pages and structure: opened from a descriptor, changed in memory, written to another
// descriptor. What a page draws is the business of pdf_canvas.h.
//
// The file is a stranger's. Damage is repaired as far as pages can still be found; where they can't, the error is
// PDFError. A disk that fails while the file is read is never taken for damage: that is PDFError::Kind::readFailed,
// whatever the reader made of the missing bytes.
//
// Pages are numbered from 0. Lengths are in the default unit of user space, 1/72 inch, before rotation. Text is UTF-8.
// A document belongs to one thread at a time; different documents don't share anything.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/pdf_geometry.h"
#include "platform/readable_file.h"

namespace quirn::platform {

class PDFError final : public std::runtime_error {
 public:
  enum class Kind {
    unreadable,   // no PDF, or one that is damaged beyond repair
    tooDeep,      // its pages are nested deeper than they are followed
    tooLarge,     // its tables of objects expand far beyond what is stored
    readFailed,   // the file system's fault
    writeFailed,  // the file system's fault, or an object that can't be written
  };

  PDFError(Kind kind, const std::string& detail) : std::runtime_error(detail), kind_(kind) {}
  Kind kind() const { return kind_; }

 private:
  Kind kind_;
};

enum class PDFBox { media, crop };

// The document information dictionary's entries that people set; what is absent is empty.
struct PDFAttributes {
  std::string title;
  std::string author;
  std::string subject;
  std::vector<std::string> keywords;  // one text as it stands, or the elements of a list
};

// An item of the outline ("bookmarks").
struct PDFBookmark {
  std::string label;
  std::size_t page = 0;
};

class PDFDocument {
 public:
  // Takes the file over, and reads it again whenever it needs to. `password` may be the user's or the owner's. Throws
  // PDFError.
  explicit PDFDocument(ReadableFile file, const std::string& password = {});
  ~PDFDocument();
  PDFDocument(PDFDocument&& other) noexcept;
  PDFDocument& operator=(PDFDocument&& other) noexcept;

  // Encrypted, and not opened by the password: it offers no pages then, and can't be written.
  bool isLocked() const;
  // Tries another password; tells whether the document is open now. Throws PDFError.
  bool unlock(const std::string& password);

  std::size_t pageCount() const;

  // With its corners in order, as on the page or inherited. Where it is missing or no rectangle: US Letter for the
  // media box, and the media box for the crop box, which is cut to it.
  PDFRectangle box(std::size_t page, PDFBox box) const;
  // Content outside of it stays in the file, unseen.
  void setCropBox(std::size_t page, const PDFRectangle& box);
  // By how much the page is turned clockwise when shown: 0, 90, 180 or 270.
  int rotation(std::size_t page) const;

  PDFAttributes attributes() const;
  // Keeps the other entries. An empty text is stored as one. Keywords are stored joined with ", ".
  void setAttributes(const PDFAttributes& attributes);

  // All levels of the outline, depth first: every item that has a label and leads to a page, by a destination, the name
  // of one, or an action that goes to one. An item that is met twice ends its branch.
  std::vector<PDFBookmark> bookmarks() const;
  // Replaces the outline by one level of items; no items leave none. Each leads to the point (0, height of the media
  // box) of its page.
  void setBookmarks(const std::vector<PDFBookmark>& bookmarks);

  // Removes what stands on the pages beside their content: notes, markup, links, form fields with the form itself.
  // Nothing else in the file leads to them afterwards.
  void removeAnnotations();

  // Writes the whole document. Streams are written as they are, the same document always as the same bytes unless it is
  // encrypted. Throws PDFError.
  void write(int descriptor) const;

  // Writes the document as it was opened, encrypted with AES-256 (revision 6 of the standard security handler) so that
  // `password` opens it for the user and the owner alike. Throws PDFError.
  void writeProtected(int descriptor, const std::string& password) const;

  // What sources of platform/ know of it: pdf_internal.h.
  struct Internals;
  explicit PDFDocument(std::unique_ptr<Internals> internals);
  Internals& internals() const { return *internals_; }

 private:
  std::unique_ptr<Internals> internals_;
};

}  // namespace quirn::platform
