// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_salvage.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/pdf_flate_filter.h"
#include "platform/pdf_internal.h"

namespace quirn::platform {
namespace {

constexpr std::string_view space{"\0\t\n\f\r ", 6};
constexpr int largestNumber = 10'000'000;

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

// Takes a number, and what is blank behind it, off the end of the text.
std::optional<int> takeLastNumber(std::string_view& text) {
  text = text.substr(0, text.find_last_not_of(space) + 1);
  const auto begin = std::ranges::find_if_not(text.rbegin(), text.rend(), &isDigit).base();
  int number = 0;
  const auto result = std::from_chars(std::to_address(begin), text.data() + text.size(), number);
  if (result.ec != std::errc() || number > largestNumber) return std::nullopt;
  text = text.substr(0, static_cast<std::size_t>(begin - text.begin()));
  return number;
}

// "/Type /Page", and not "/Type /Pages".
bool looksLikePage(std::string_view object) {
  for (std::size_t at = object.find("/Type"); at != std::string_view::npos; at = object.find("/Type", at + 1)) {
    std::string_view value = object.substr(at + 5);
    value.remove_prefix(std::min(value.find_first_not_of(space), value.size()));
    if (value.starts_with("/Page") && (value.size() == 5 || value.find_first_of("/<>[]() \r\n\t", 5) == 5)) return true;
  }
  return false;
}

struct Found {
  std::vector<int> pages;
  int largest = 0;
};

Found objectsIn(std::string_view bytes) {
  constexpr std::size_t longestPage = 4096;
  constexpr std::size_t longestHead = 24;  // both numbers
  Found found;
  std::set<int> known;
  for (std::size_t at = bytes.find("obj"); at != std::string_view::npos; at = bytes.find("obj", at + 3)) {
    const std::size_t begin = at - std::min(at, longestHead);
    std::string_view head = bytes.substr(begin, at - begin);
    if (!takeLastNumber(head)) continue;
    const auto number = takeLastNumber(head);
    if (!number) continue;
    found.largest = std::max(found.largest, *number);
    std::string_view object = bytes.substr(at, longestPage);
    object = object.substr(0, object.find("endobj"));
    if (looksLikePage(object) && known.insert(*number).second) found.pages.push_back(*number);
  }
  return found;
}

// A catalog of its own behind the file, which leads to the pages.
std::string catalogOf(const Found& found) {
  const int catalog = found.largest + 1;
  std::string kids;
  for (const int page : found.pages) kids += fmt::format("{} 0 R ", page);
  return fmt::format(
      "\n{0} 0 obj\n<< /Type /Catalog /Pages {1} 0 R >>\nendobj\n{1} 0 obj\n<< /Type /Pages /Count {2} /Kids [{3}] >>\n"
      "endobj\ntrailer\n<< /Root {0} 0 R /Size {4} >>\nstartxref\n0\n%%EOF\n",
      catalog, catalog + 1, found.pages.size(), kids, catalog + 2);
}

// Words that the library would follow on its own search.
void disableTrailers(std::string& bytes) {
  for (std::size_t at = bytes.find("trailer"); at != std::string::npos; at = bytes.find("trailer", at + 1))
    bytes[at] = 'T';
}

}  // namespace

PDFDocument salvagedPDF(std::string bytes) {
  const Found found = objectsIn(bytes);
  if (found.pages.empty() || bytes.find("/Encrypt") != std::string::npos)
    throw PDFError(PDFError::Kind::unreadable, "no pages");
  disableTrailers(bytes);
  // The library passes over an object at the very beginning.
  bytes = "%PDF-1.7\n" + bytes + catalogOf(found);
  auto internals = std::make_unique<PDFDocument::Internals>();
  internals->guarded(PDFError::Kind::unreadable, [&] {
    boundFlateStreams();
    internals->qpdf = std::make_unique<QPDF>();
    internals->qpdf->setSuppressWarnings(true);
    internals->qpdf->processInputSource(std::make_shared<BufferInputSource>("salvaged", bytes));
    internals->findPages();
  });
  return PDFDocument(std::move(internals));
}

}  // namespace quirn::platform
