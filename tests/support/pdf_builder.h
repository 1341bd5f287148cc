// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// PDF files in the making, object by object, right or wrong as a test wants them.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quirn::tests {

class PDFBuilder {
 public:
  // The number of an object that is set later.
  int reserve();
  int add(const std::string& object);
  int addStream(const std::string& dictionaryEntries, const std::string& data);
  void set(int number, const std::string& object);

  // The file with a cross-reference table. `trailer` are entries on top of /Root and /Size.
  std::string file(int root, const std::string& trailer = "") const;

 private:
  std::vector<std::string> objects_;
};

// A document of pages that say "{word} 1", "{word} 2", … in 24 points; `pageEntries` are on every page, and
// `catalogEntries` in the catalog.
std::string pdfOfPages(int count, const std::string& word = "Page", const std::string& pageEntries = "",
                       const std::string& catalogEntries = "");

}  // namespace quirn::tests
