// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_predictor.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace quirn::platform {
namespace {

constexpr std::int64_t longestRow = std::int64_t{64} << 20;  // bytes
constexpr int mostColors = 64;

std::optional<int> integerOf(QPDFObjectHandle parameters, const std::string& key, int fallback) {
  QPDFObjectHandle object = parameters.getKey(key);
  int value = fallback;
  return object.isNull() || object.getValueAsInt(value) ? std::optional(value) : std::nullopt;
}

std::optional<PDFPredictor::Kind> kindOf(int number) {
  if (number == 1) return PDFPredictor::Kind::none;
  if (number == 2) return PDFPredictor::Kind::tiff;
  return number >= 10 && number <= 15 ? std::optional(PDFPredictor::Kind::png) : std::nullopt;
}

// RFC 2083, 6.6: whichever of left, above and upper left is closest to left + above - upper left.
unsigned char paeth(int left, int above, int upperLeft) {
  const int fromLeft = std::abs(above - upperLeft);
  const int fromAbove = std::abs(left - upperLeft);
  const int fromUpperLeft = std::abs(left + above - 2 * upperLeft);
  if (fromLeft <= fromAbove && fromLeft <= fromUpperLeft) return static_cast<unsigned char>(left);
  return static_cast<unsigned char>(fromAbove <= fromUpperLeft ? above : upperLeft);
}

}  // namespace

std::size_t PDFPredictor::pixelBytes() const {
  return static_cast<std::size_t>(std::max(1, colors * bitsPerComponent / 8));
}

std::optional<PDFPredictor> predictorOf(QPDFObjectHandle parameters) {
  const auto number = integerOf(parameters, "/Predictor", 1);
  const auto columns = integerOf(parameters, "/Columns", 1);
  const auto colors = integerOf(parameters, "/Colors", 1);
  const auto bits = integerOf(parameters, "/BitsPerComponent", 8);
  const auto kind = number ? kindOf(*number) : std::nullopt;
  if (!kind || !columns || !colors || !bits) return std::nullopt;
  if (*kind == PDFPredictor::Kind::none) return PDFPredictor();
  static constexpr int depths[] = {1, 2, 4, 8, 16};
  if (*columns < 1 || *colors < 1 || *colors > mostColors || std::ranges::count(depths, *bits) == 0)
    return std::nullopt;
  const std::int64_t rowBytes = (std::int64_t{*columns} * *colors * *bits + 7) / 8;
  if (rowBytes > longestRow) return std::nullopt;
  return PDFPredictor{*kind, *colors, *bits, static_cast<std::size_t>(rowBytes)};
}

PDFPredictedRows::PDFPredictedRows(const PDFPredictor& predictor, Pipeline* target)
    : Pipeline("predictor", target),
      predictor_(predictor),
      storedBytes_(predictor.rowBytes + (predictor.kind == PDFPredictor::Kind::png ? 1 : 0)),
      above_(predictor.rowBytes) {}

void PDFPredictedRows::write(const unsigned char* bytes, std::size_t count) {
  std::span<const unsigned char> rest(bytes, count);
  while (!rest.empty()) {
    const auto piece = rest.first(std::min(rest.size(), storedBytes_ - stored_.size()));
    stored_.insert(stored_.end(), piece.begin(), piece.end());
    rest = rest.subspan(piece.size());
    if (stored_.size() == storedBytes_) passRow();
  }
}

void PDFPredictedRows::finish() {
  if (!stored_.empty()) passRow();
  getNext()->finish();
}

void PDFPredictedRows::passRow() {
  const bool isPNG = predictor_.kind == PDFPredictor::Kind::png;
  row_.assign(stored_.begin() + (isPNG ? 1 : 0), stored_.end());
  isPNG ? undoPNG(stored_.front()) : undoTIFF();
  getNext()->write(row_.data(), row_.size());
  row_.resize(predictor_.rowBytes);
  above_.swap(row_);
  stored_.clear();
}

void PDFPredictedRows::undoPNG(unsigned char type) {
  const std::size_t pixel = predictor_.pixelBytes();
  for (std::size_t i = 0; i < row_.size(); ++i) {
    const int left = i < pixel ? 0 : row_[i - pixel];
    const int upperLeft = i < pixel ? 0 : above_[i - pixel];
    int predicted = 0;
    switch (type) {
      case 1: predicted = left; break;
      case 2: predicted = above_[i]; break;
      case 3: predicted = (left + above_[i]) / 2; break;
      case 4: predicted = paeth(left, above_[i], upperLeft); break;
      default: return;  // 0, or none that is known
    }
    row_[i] = static_cast<unsigned char>(row_[i] + predicted);
  }
}

// The difference to the sample of the same component before it, the most significant byte first.
void PDFPredictedRows::undoTIFF() {
  if (predictor_.bitsPerComponent < 8) return undoSmallTIFF();
  const bool isWide = predictor_.bitsPerComponent == 16;
  const std::size_t sample = isWide ? 2 : 1;
  const std::size_t pixel = predictor_.pixelBytes();
  for (std::size_t i = pixel; i + sample <= row_.size(); i += sample) {
    if (isWide) {
      const int before = row_[i - pixel] << 8 | row_[i - pixel + 1];
      const int value = (row_[i] << 8 | row_[i + 1]) + before;
      row_[i] = static_cast<unsigned char>(value >> 8);
      row_[i + 1] = static_cast<unsigned char>(value);
    } else {
      row_[i] = static_cast<unsigned char>(row_[i] + row_[i - pixel]);
    }
  }
}

void PDFPredictedRows::undoSmallTIFF() {
  const auto bits = static_cast<std::size_t>(predictor_.bitsPerComponent);
  const auto colors = static_cast<std::size_t>(predictor_.colors);
  const unsigned mask = (1U << bits) - 1;
  std::vector<unsigned> before(colors);
  for (std::size_t i = 0; (i + 1) * bits <= row_.size() * 8; ++i) {
    unsigned char& byte = row_[i * bits / 8];
    const std::size_t shift = 8 - bits - i * bits % 8;
    unsigned& last = before[i % colors];
    last = ((unsigned{byte} >> shift) + last) & mask;
    byte = static_cast<unsigned char>((byte & ~(mask << shift)) | last << shift);
  }
}

}  // namespace quirn::platform
