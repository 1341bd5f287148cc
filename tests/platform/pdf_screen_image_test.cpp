// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_screen_image.h"

#include <gtest/gtest.h>

#include <string>

#include "support/jpx_picture.h"

namespace quirn::platform {
namespace {

// A ramp with some texture, as photographs have.
PDFStoredImage photo(std::size_t width, std::size_t height, std::size_t components) {
  PDFStoredImage image{.size = {width, height}, .components = components};
  for (std::size_t i = 0; i < width * height * components; ++i)
    image.bytes += static_cast<char>((i / components % width + i * i % 23) & 0xFF);
  image.storedBytes = image.bytes.size();
  return image;
}

TEST(PDFScreenImage, ReducedPixelsAreTheMeanOfThoseTheyCover) {
  const PDFSamples four{{4, 2}, 1, std::string("\x00\x10\x20\x30\x10\x20\x30\x40", 8)};
  EXPECT_EQ(reduced(four, {2, 1}).bytes, std::string("\x10\x30"));
  EXPECT_EQ(reduced(four, {4, 2}).bytes, four.bytes);
  // 3 to 2: the middle one is shared out.
  EXPECT_EQ(reduced({{3, 1}, 1, std::string("\x00\x30\x60", 3)}, {2, 1}).bytes, std::string("\x10\x50"));
}

TEST(PDFScreenImage, IsNoLargerThanItIsShown) {
  for (const std::size_t components : {1U, 3U, 4U}) {
    const auto screen = screenImage(photo(400, 300, components), {100, 75});
    ASSERT_TRUE(screen) << components;
    EXPECT_EQ(screen->size, (PDFPixelSize{100, 75}));
    const auto decoded = decodedJPEG(screen->bytes, screen->size, screen->size);
    ASSERT_TRUE(decoded) << components;
    EXPECT_EQ(decoded->components, components);
  }
}

TEST(PDFScreenImage, KeepsItsPixelsWhereItIsShownLarger) {
  const auto screen = screenImage(photo(400, 300, 3), {4000, 3000});
  ASSERT_TRUE(screen);
  EXPECT_EQ(screen->size, (PDFPixelSize{400, 300}));
}

TEST(PDFScreenImage, KeepsTheSamplesOfEveryComponent) {
  PDFStoredImage flat{.size = {64, 64}, .components = 4};
  for (int i = 0; i < 64 * 64; ++i) flat.bytes += std::string("\x20\x60\xA0\xE0", 4);
  flat.storedBytes = flat.bytes.size();
  const auto screen = screenImage(flat, {64, 64});
  ASSERT_TRUE(screen);
  const auto decoded = decodedJPEG(screen->bytes, {64, 64}, {64, 64});
  ASSERT_TRUE(decoded);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(static_cast<unsigned char>(decoded->bytes[i]), static_cast<unsigned char>(flat.bytes[i]), 4) << i;
  }
}

// Red and white above green and blue, of a size that halves badly.
TEST(PDFScreenImage, KeepsColorsInPlaceFromJPEGToJPEG) {
  const std::string colors[] = {"\xE0\x20\x20", "\xF0\xF0\xF0", "\x20\xC0\x20", "\x20\x20\xE0"};
  PDFSamples quarters{{301, 203}, 3, {}};
  for (std::size_t y = 0; y < 203; ++y) {
    for (std::size_t x = 0; x < 301; ++x) quarters.bytes += colors[(y < 101 ? 0 : 2) + (x < 150 ? 0 : 1)];
  }
  const std::string jpeg = encodedJPEG(quarters, 95);
  for (const PDFPixelSize size : {PDFPixelSize{301, 203}, PDFPixelSize{151, 101}, PDFPixelSize{43, 29}}) {
    const auto screen = screenImage({PDFStoredImage::Coding::jpeg, jpeg, 1 << 20, {301, 203}, 3}, size);
    ASSERT_TRUE(screen);
    ASSERT_EQ(screen->size, size);
    const auto found = decodedJPEG(screen->bytes, size, size);
    ASSERT_TRUE(found);
    // Pixels beside the middle, and at the far corner.
    for (std::size_t quarter = 0; quarter < 4; ++quarter) {
      const std::size_t x = quarter % 2 == 0 ? size.width / 2 - 3 : size.width / 2 + 3;
      const std::size_t y = quarter < 2 ? size.height / 2 - 3 : size.height - 1;
      for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(static_cast<unsigned char>(found->bytes[(y * size.width + x) * 3 + i]),
                    static_cast<unsigned char>(colors[quarter][i]), 24)
            << size.width << " " << quarter << " " << i;
    }
  }
}

TEST(PDFScreenImage, IsLeftAloneWhereItWouldGrow) {
  PDFStoredImage image = photo(64, 64, 3);
  image.storedBytes = 40;
  EXPECT_FALSE(screenImage(image, {64, 64}));
  // Coded anew at its own size, it must become a good deal smaller.
  const auto once = screenImage(photo(400, 300, 3), {400, 300});
  ASSERT_TRUE(once);
  PDFStoredImage jpeg{PDFStoredImage::Coding::jpeg, once->bytes, once->bytes.size(), {400, 300}, 3};
  EXPECT_FALSE(screenImage(jpeg, {400, 300}));
}

TEST(PDFScreenImage, IsLeftAloneWhereItsBytesAreNotWhatIsSaid) {
  PDFStoredImage image = photo(64, 64, 3);
  image.bytes.resize(100);
  image.storedBytes = 1;
  EXPECT_FALSE(screenImage(image, {64, 64}));
  PDFStoredImage jpeg{PDFStoredImage::Coding::jpeg, "\xFF\xD8 no picture", 9999, {64, 64}, 3};
  EXPECT_FALSE(screenImage(jpeg, {64, 64}));
  const auto real = screenImage(photo(64, 64, 3), {64, 64});
  ASSERT_TRUE(real);
  // Another size, other components, and a file that breaks off.
  EXPECT_FALSE(screenImage({PDFStoredImage::Coding::jpeg, real->bytes, 99999, {60000, 60000}, 3}, {64, 64}));
  EXPECT_FALSE(screenImage({PDFStoredImage::Coding::jpeg, real->bytes, 99999, {64, 64}, 1}, {64, 64}));
  EXPECT_FALSE(screenImage({PDFStoredImage::Coding::jpeg, real->bytes.substr(0, 300), 99999, {64, 64}, 3}, {64, 64}));
}

TEST(PDFScreenImage, APaletteBecomesItsColors) {
  PDFStoredImage image{.size = {256, 64}, .components = 3, .bitsPerComponent = 4};
  for (int i = 0; i < 16; ++i) image.palette += std::string(3, static_cast<char>(i * 16));
  for (int i = 0; i < 128 * 64; ++i) image.bytes += static_cast<char>(i * 7);
  image.storedBytes = 1 << 20;
  const auto screen = screenImage(image, {32, 8});
  ASSERT_TRUE(screen);
  EXPECT_EQ(screen->coding, PDFScreenImage::Coding::jpeg);
  EXPECT_EQ(screen->size, (PDFPixelSize{32, 8}));
}

TEST(PDFScreenImage, AMaskIsReducedWithoutLoss) {
  PDFStoredImage mask{.size = {8, 8}, .components = 1};
  mask.bytes = std::string(32, '\0') + std::string(32, '\xFF');
  mask.storedBytes = 64;
  const auto screen = screenMask(mask, {2, 2});
  ASSERT_TRUE(screen);
  EXPECT_EQ(screen->coding, PDFScreenImage::Coding::deflated);
  EXPECT_EQ(screen->bytes, deflated(std::string("\0\0\xFF\xFF", 4)));
}

TEST(PDFScreenImage, ReadsJPEG2000) {
  const auto samples = decodedJPX(tests::fourByTwoJPX(), {4, 2}, JPXColors::ofFile);
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->size, (PDFPixelSize{4, 2}));
  std::string expected;
  for (int i = 0; i < 8; ++i) expected += {static_cast<char>(30 * i), static_cast<char>(255 - 30 * i), 100};
  EXPECT_EQ(samples->bytes, expected);
}

TEST(PDFScreenImage, LeavesJPEG2000AloneThatIsDamagedOrLies) {
  const std::string whole = tests::fourByTwoJPX();
  for (std::size_t size = 0; size + 2 < whole.size(); ++size)
    EXPECT_FALSE(decodedJPX(whole.substr(0, size), {1, 1}, JPXColors::ofDocument)) << size;
  constexpr std::size_t width = 0x5D;  // of the codestream, four bytes
  std::string lying = whole;
  for (const char byte : {'\x7F', '\x01'}) {
    lying[width] = byte;
    EXPECT_FALSE(decodedJPX(lying, {1, 1}, JPXColors::ofDocument)) << int{byte};
  }
  std::string otherColors = whole;
  otherColors[0x4C] = 18;  // brightness and two differences, instead of 16
  EXPECT_FALSE(decodedJPX(otherColors, {1, 1}, JPXColors::ofFile));
}

}  // namespace
}  // namespace quirn::platform
