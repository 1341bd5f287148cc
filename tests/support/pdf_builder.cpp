// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/pdf_builder.h"

#include <fmt/format.h>

namespace quirn::tests {

int PDFBuilder::reserve() {
  objects_.emplace_back();
  return static_cast<int>(objects_.size());
}

int PDFBuilder::add(const std::string& object) {
  objects_.push_back(object);
  return static_cast<int>(objects_.size());
}

int PDFBuilder::addStream(const std::string& dictionaryEntries, const std::string& data) {
  return add(fmt::format("<< {} /Length {} >>\nstream\n{}\nendstream", dictionaryEntries, data.size(), data));
}

void PDFBuilder::set(int number, const std::string& object) {
  objects_.at(static_cast<std::size_t>(number) - 1) = object;
}

std::string PDFBuilder::file(int root, const std::string& trailer) const {
  std::string file = "%PDF-1.7\n";
  std::string table = fmt::format("xref\n0 {}\n0000000000 65535 f \n", objects_.size() + 1);
  for (std::size_t i = 0; i < objects_.size(); ++i) {
    table += fmt::format("{:010} 00000 n \n", file.size());
    file += fmt::format("{} 0 obj\n{}\nendobj\n", i + 1, objects_[i]);
  }
  return fmt::format("{}{}trailer\n<< /Size {} /Root {} 0 R {} >>\nstartxref\n{}\n%%EOF\n", file, table,
                     objects_.size() + 1, root, trailer, file.size());
}

std::string pdfOfPages(int count, const std::string& word, const std::string& pageEntries,
                       const std::string& catalogEntries) {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int font = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
  std::string kids;
  for (int page = 1; page <= count; ++page) {
    const int content = pdf.addStream("", fmt::format("BT /F 24 Tf 72 700 Td ({} {}) Tj ET", word, page));
    const int number =
        pdf.add(fmt::format("<< /Type /Page /Parent {} 0 R /Contents {} 0 R {} >>", pages, content, pageEntries));
    kids += fmt::format("{} 0 R ", number);
  }
  pdf.set(pages, fmt::format("<< /Type /Pages /Count {} /Kids [ {}] /MediaBox [0 0 595 842] "
                             "/Resources << /Font << /F {} 0 R >> >> >>",
                             count, kids, font));
  pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R {} >>", pages, catalogEntries));
  return pdf.file(catalog);
}

}  // namespace quirn::tests
