// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Predictors (ISO 32000-2, 7.4.4.4), by which rows of samples were made to compress better: those of PNG (RFC 2083,
// chapter 6), which each row chooses for itself, and that of TIFF.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/pdf_library.h"

namespace quirn::platform {

struct PDFPredictor {
  enum class Kind { none, tiff, png };
  Kind kind = Kind::none;
  int colors = 1;
  int bitsPerComponent = 8;
  std::size_t rowBytes = 0;

  // Between a sample and that of the same component before it; 1 for smaller samples.
  std::size_t pixelBytes() const;
};

// What a dictionary of decode parameters says; nothing if it makes no sense.
std::optional<PDFPredictor> predictorOf(QPDFObjectHandle parameters);

// Undoes it, row by row.
class PDFPredictedRows final : public Pipeline {
 public:
  // `target` outlives it.
  PDFPredictedRows(const PDFPredictor& predictor, Pipeline* target);

  void write(const unsigned char* bytes, std::size_t count) override;
  // Passes on what there is of a last row that breaks off.
  void finish() override;

 private:
  void passRow();
  void undoPNG(unsigned char type);
  void undoTIFF();
  void undoSmallTIFF();

  PDFPredictor predictor_;
  std::size_t storedBytes_;            // of a row, with its type
  std::vector<unsigned char> stored_;  // of the row that is being gathered
  std::vector<unsigned char> row_;
  std::vector<unsigned char> above_;
};

}  // namespace quirn::platform
