// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_object_writer.h"

#include <fmt/format.h>

#include <span>
#include <stdexcept>

#include "platform/digest.h"

namespace quirn::platform {
namespace {

// The second line marks the file as binary.
constexpr std::string_view header = "%PDF-1.7\n%\xBF\xF7\xA2\xFE\n";
constexpr std::int64_t largestOffset = 9'999'999'999;  // ten digits

std::string digestOf(std::string_view content, std::string_view origin) {
  Digest digest(DigestAlgorithm::sha256);
  digest.update(std::as_bytes(std::span(content)));
  digest.update(std::as_bytes(std::span(origin)));
  constexpr std::size_t identifierDigits = 32;
  return digest.finishHex().substr(0, identifierDigits);
}

}  // namespace

std::string versionEntry(const std::string& sourceVersion) {
  return sourceVersion > "1.7" && sourceVersion.starts_with("2.") ? "/Version /2.0 " : "";
}

PDFObjectWriter::PDFObjectWriter(int descriptor, const PDFEncryption* encryption)
    : sink_(descriptor), encryption_(encryption) {
  put(header);
}

int PDFObjectWriter::reserve() {
  offsets_.push_back(0);
  return static_cast<int>(offsets_.size());
}

void PDFObjectWriter::put(std::string_view text) {
  sink_.append(text);
  position_ += std::ssize(text);
}

void PDFObjectWriter::begin(int number) {
  if (position_ > largestOffset) throw std::runtime_error("too large for a cross-reference table");
  offsets_.at(static_cast<std::size_t>(number) - 1) = position_;
  put(fmt::format("{} 0 obj\n", number));
}

void PDFObjectWriter::write(int number, std::string_view text) {
  begin(number);
  put(text);
  put("\nendobj\n");
}

void PDFObjectWriter::beginStream(int number, std::string_view dictionary, std::int64_t length) {
  begin(number);
  put(dictionary.substr(0, dictionary.size() - 2));
  put(fmt::format(" /Length {}>>\nstream\n", encryption_ == nullptr ? length : PDFStreamCipher::sizeOf(length)));
  if (encryption_ != nullptr) cipher_ = std::make_unique<PDFStreamCipher>(*encryption_);
}

void PDFObjectWriter::append(std::string_view bytes) {
  put(cipher_ ? cipher_->next(bytes) : bytes);
}

void PDFObjectWriter::endStream() {
  if (cipher_) put(cipher_->last());
  cipher_.reset();
  put("\nendstream\nendobj\n");
}

void PDFObjectWriter::finish(std::string_view trailer, std::string_view origin) {
  std::string table = fmt::format("xref\n0 {}\n0000000000 65535 f \n", offsets_.size() + 1);
  for (const std::int64_t offset : offsets_) {
    table += offset == 0 ? "0000000000 65535 f \n" : fmt::format("{:010} 00000 n \n", offset);
  }
  const std::int64_t start = position_;
  put(table);
  put(fmt::format("trailer\n<< /Size {} {}", offsets_.size() + 1, trailer));
  if (trailer.find("/ID") == std::string_view::npos) {
    const std::string identifier = digestOf(table, origin);
    put(fmt::format(" /ID [<{0}><{0}>]", identifier));
  }
  put(fmt::format(" >>\nstartxref\n{}\n%%EOF\n", start));
  sink_.flush();
}

}  // namespace quirn::platform
