// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A new document made of pages of others. It holds pages, and what a reader sees on them: their resources and boxes,
// inherited ones included; annotations; the values of form fields; the layers, on or off as they were. Outlines,
// attributes, scripts of the document and its attachments stay behind.
//
// Streams are taken over as they are. The document is written while it is put together, so memory doesn't grow with it.

#pragma once

#include <cstddef>
#include <memory>
#include <stop_token>

#include "platform/pdf_document.h"

namespace quirn::platform {

class PDFAssembly {
 public:
  // The descriptor stays the caller's and is at the beginning of its file.
  explicit PDFAssembly(int descriptor);
  ~PDFAssembly();
  PDFAssembly(const PDFAssembly&) = delete;
  PDFAssembly& operator=(const PDFAssembly&) = delete;

  // Appends `count` pages of `source` from `first` on, as they were when it was opened, and gives how many arrived;
  // fewer once `stop` is requested. The source isn't needed afterwards. Throws PDFError.
  std::size_t append(const PDFDocument& source, std::size_t first, std::size_t count, const std::stop_token& stop);

  // Completes the file. The last call.
  void finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quirn::platform
