// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_predictor.h"

#include <gtest/gtest.h>

namespace quirn::tests {
namespace {

using platform::PDFPredictor;

struct Row {
  const char* sentence;
  const char* parameters;
  std::vector<unsigned char> stored;
  std::vector<unsigned char> samples;  // by hand, after RFC 2083 and TIFF 6.0, section 14
};

const Row rows[] = {
    {"each row of PNG has a type of its own",
     "<< /Predictor 15 /Columns 3 >>",
     {0, 9, 8, 7, 1, 1, 1, 1, 2, 1, 1, 1, 3, 1, 1, 1, 4, 0, 0, 0},
     {9, 8, 7, 1, 2, 3, 2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {"left of a colour is the same colour",
     "<< /Predictor 11 /Columns 2 /Colors 3 >>",
     {1, 1, 2, 3, 1, 1, 255},
     {1, 2, 3, 2, 3, 2}},
    {"a last row that breaks off counts as far as it goes",
     "<< /Predictor 12 /Columns 3 >>",
     {2, 1, 2, 3, 2, 1},
     {1, 2, 3, 2}},
    {"a row of an unknown type is taken as it is", "<< /Predictor 10 /Columns 1 >>", {7, 5}, {5}},
    {"TIFF begins each row anew", "<< /Predictor 2 /Columns 3 >>", {1, 1, 1, 2, 2, 2}, {1, 2, 3, 2, 4, 6}},
    {"TIFF keeps colours apart", "<< /Predictor 2 /Columns 2 /Colors 3 >>", {1, 2, 3, 1, 1, 255}, {1, 2, 3, 2, 3, 2}},
    {"two bytes of a sample carry over",
     "<< /Predictor 2 /Columns 2 /BitsPerComponent 16 >>",
     {0x00, 0xFF, 0x00, 0x01},
     {0x00, 0xFF, 0x01, 0x00}},
    {"samples of four bits don't", "<< /Predictor 2 /Columns 4 /BitsPerComponent 4 >>", {0x11, 0x1F}, {0x12, 0x32}},
    {"two colours of two bits", "<< /Predictor 2 /Columns 2 /Colors 2 /BitsPerComponent 2 >>", {0x65}, {0x6B}},
    {"single bits", "<< /Predictor 2 /Columns 8 /BitsPerComponent 1 >>", {0xA1}, {0xC1}},
};

TEST(PDFPredictor, IsUndone) {
  for (const Row& row : rows) {
    const auto predictor = platform::predictorOf(QPDFObjectHandle::parse(row.parameters));
    ASSERT_TRUE(predictor) << row.sentence;
    // However the bytes come.
    for (const std::size_t step : {row.stored.size(), std::size_t{1}}) {
      Pl_Buffer samples("samples");
      platform::PDFPredictedRows decoder(*predictor, &samples);
      for (std::size_t at = 0; at < row.stored.size(); at += step) decoder.write(&row.stored[at], step);
      decoder.finish();
      const auto buffer = samples.getBufferSharedPointer();
      EXPECT_EQ(std::vector(buffer->getBuffer(), buffer->getBuffer() + buffer->getSize()), row.samples) << row.sentence;
    }
  }
}

TEST(PDFPredictor, IsRefusedWhereItMakesNoSense) {
  for (const char* const parameters :
       {"<< /Predictor 3 >>", "<< /Predictor 16 >>", "<< /Predictor 12 /Columns 0 >>",
        "<< /Predictor 12 /Columns -1 >>", "<< /Predictor 12 /Colors 0 >>", "<< /Predictor 2 /BitsPerComponent 3 >>",
        "<< /Predictor /Twelve >>", "<< /Predictor 12 /Columns 2147483647 /Colors 64 /BitsPerComponent 16 >>"}) {
    EXPECT_FALSE(platform::predictorOf(QPDFObjectHandle::parse(parameters))) << parameters;
  }
}

}  // namespace
}  // namespace quirn::tests
