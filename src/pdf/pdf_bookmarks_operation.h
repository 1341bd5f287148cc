// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Replaces a document's bookmarks by one level of them.

#pragma once

#include <array>
#include <vector>

#include "core/budgets.h"
#include "core/operation.h"
#include "pdf/bookmark_entry.h"

namespace quirn {

struct PDFBookmarksConfig : OperationConfig {
  std::vector<BookmarkEntry> entries;
  int pageCount = 1;  // of the input, at least 1

  static Panel panel();
};

class PDFBookmarksOperation final : public ConfigurableOperation<PDFBookmarksConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  // The document's own bookmarks of all levels.
  static PDFBookmarksConfig configurationFor(std::span<const InputFile> inputs, OperationContext& context);

 protected:
  OperationResult runWith(std::span<const InputFile> inputs, const PDFBookmarksConfig& config,
                          OperationContext& context) const override;
};

}  // namespace quirn
