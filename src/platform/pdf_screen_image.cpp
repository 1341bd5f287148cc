// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_screen_image.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace quirn::platform {
namespace {

// Quality 0.75: three quarters of the steps of the tables in ISO/IEC 10918-1, annex K, which the library numbers so.
constexpr int screenQuality = 63;
constexpr int deflateLevel = 9;
// To code JPEG anew costs some of its quality; that must be worth something.
constexpr double leastGainOfJPEG = 0.9;

struct Freeing {
  void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

PDFPixelSize smallerOf(PDFPixelSize one, PDFPixelSize other) {
  return {std::min(one.width, other.width), std::min(one.height, other.height)};
}

// One sample as a byte: of 16 bits the upper half; of fewer, spread over all of its range unless it is an index.
class SampleReader {
 public:
  SampleReader(std::string_view row, std::size_t bits, bool isIndex)
      : row_(row), bits_(bits), factor_(isIndex || bits >= 8 ? 1 : 255U / ((1U << bits) - 1)) {}

  std::uint8_t operator()(std::size_t index) const {
    const std::size_t bit = index * bits_;
    const auto byte = static_cast<std::uint8_t>(row_[bit / 8]);
    if (bits_ >= 8) return byte;
    return static_cast<std::uint8_t>((byte >> (8 - bits_ - bit % 8) & ((1U << bits_) - 1)) * factor_);
  }

 private:
  std::string_view row_;
  std::size_t bits_;
  unsigned factor_;
};

void appendColor(std::string& bytes, const PDFStoredImage& image, std::size_t index) {
  const std::size_t colors = image.palette.size() / image.components;
  bytes.append(image.palette, std::min(index, colors - 1) * image.components, image.components);
}

std::optional<PDFSamples> unpacked(const PDFStoredImage& image) {
  const bool isIndexed = !image.palette.empty();
  const std::size_t perRow = image.size.width * (isIndexed ? 1 : image.components);
  const std::size_t rowBytes = (perRow * image.bitsPerComponent + 7) / 8;
  if (image.bytes.size() < rowBytes * image.size.height) return std::nullopt;
  PDFSamples samples{image.size, image.components, {}};
  samples.bytes.reserve(image.size.width * image.size.height * image.components);
  for (std::size_t y = 0; y < image.size.height; ++y) {
    const std::string_view row = std::string_view(image.bytes).substr(y * rowBytes, rowBytes);
    const SampleReader sample(row, image.bitsPerComponent, isIndexed);
    if (!isIndexed && image.bitsPerComponent == 8) {
      samples.bytes += row;
      continue;
    }
    for (std::size_t x = 0; x < perRow; ++x) {
      if (isIndexed)
        appendColor(samples.bytes, image, sample(x));
      else
        samples.bytes.push_back(static_cast<char>(sample(x)));
    }
  }
  return samples;
}

std::optional<PDFSamples> decoded(const PDFStoredImage& image, PDFPixelSize least) {
  if (image.coding == PDFStoredImage::Coding::samples) return unpacked(image);
  const bool isJPX = image.coding == PDFStoredImage::Coding::jpx;
  auto samples = isJPX ? decodedJPX(image.bytes, least, image.colors) : decodedJPEG(image.bytes, image.size, least);
  // A colour space that says otherwise makes no picture.
  return samples && samples->components == image.components ? samples : std::nullopt;
}

std::optional<PDFReducedJPEG> coded(const PDFStoredImage& image, PDFPixelSize most) {
  if (image.coding == PDFStoredImage::Coding::jpeg && image.components == 3) {
    if (auto jpeg = reducedJPEG(image.bytes, image.size, most, screenQuality)) return jpeg;
  }
  auto samples = decoded(image, most);
  if (!samples) return std::nullopt;
  const PDFPixelSize size = smallerOf(samples->size, most);
  return PDFReducedJPEG{encodedJPEG(reduced(std::move(*samples), size), screenQuality), size};
}

std::optional<PDFScreenImage> asJPEG(const PDFStoredImage& image, PDFPixelSize most) {
  auto result = coded(image, most);
  if (!result) return std::nullopt;
  const bool isSecondCoding = image.coding != PDFStoredImage::Coding::samples && result->size == image.size;
  const double gain = isSecondCoding ? leastGainOfJPEG : 1;
  if (static_cast<double>(result->jpeg.size()) >= static_cast<double>(image.storedBytes) * gain) return std::nullopt;
  return PDFScreenImage{PDFScreenImage::Coding::jpeg, std::move(result->jpeg), result->size, 8, image.components};
}

std::optional<PDFScreenImage> asDeflated(const PDFStoredImage& image) {
  if (image.coding != PDFStoredImage::Coding::samples) return std::nullopt;
  std::string bytes = deflated(image.bytes);
  if (bytes.size() >= image.storedBytes) return std::nullopt;
  return PDFScreenImage{PDFScreenImage::Coding::deflated, std::move(bytes), image.size, image.bitsPerComponent,
                        image.components};
}

}  // namespace

std::optional<PDFScreenImage> screenImage(const PDFStoredImage& image, PDFPixelSize most) {
  auto jpeg = asJPEG(image, most);
  return jpeg ? std::move(jpeg) : asDeflated(image);
}

std::optional<PDFScreenImage> screenMask(const PDFStoredImage& mask, PDFPixelSize most) {
  const PDFPixelSize size = smallerOf(mask.size, most);
  if (mask.components != 1 || !mask.palette.empty()) return std::nullopt;
  if (size == mask.size) return asDeflated(mask);
  auto samples = decoded(mask, size);
  if (!samples) return std::nullopt;
  std::string bytes = deflated(reduced(std::move(*samples), size).bytes);
  if (bytes.size() >= mask.storedBytes) return std::nullopt;
  return PDFScreenImage{PDFScreenImage::Coding::deflated, std::move(bytes), size, 8, mask.components};
}

std::string deflated(std::string_view bytes) {
  const std::unique_ptr<libdeflate_compressor, Freeing> compressor(libdeflate_alloc_compressor(deflateLevel));
  if (!compressor) throw std::bad_alloc();
  std::string result(libdeflate_zlib_compress_bound(compressor.get(), bytes.size()), '\0');
  result.resize(libdeflate_zlib_compress(compressor.get(), bytes.data(), bytes.size(), result.data(), result.size()));
  return result;
}

}  // namespace quirn::platform
