// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"

namespace quirn {
namespace {

AcceptedInputs pdfs(std::size_t atLeast, std::size_t atMost) {
  return {
      .singular = "PDF", .plural = "PDFs", .atLeast = atLeast, .atMost = atMost, .matches = [](const InputFile& input) {
        return input.contentType.conformsTo(ContentKind::pdf);
      }};
}

}  // namespace

const AcceptedInputs& onePDF() {
  static const AcceptedInputs accepted = pdfs(1, 1);
  return accepted;
}

const AcceptedInputs& anyPDFs() {
  static const AcceptedInputs accepted = pdfs(1, AcceptedInputs::anyNumber);
  return accepted;
}

const AcceptedInputs& twoOrMorePDFs() {
  static const AcceptedInputs accepted = pdfs(2, AcceptedInputs::anyNumber);
  return accepted;
}

}  // namespace quirn
