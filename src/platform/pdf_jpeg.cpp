// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_jpeg.h"

#include <turbojpeg.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

namespace quirn::platform {
namespace {

struct Closing {
  void operator()(void* handle) const { tjDestroy(handle); }
};
using Codec = std::unique_ptr<void, Closing>;

struct Freeing {
  void operator()(unsigned char* bytes) const { tjFree(bytes); }
};

const unsigned char* bytesOf(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::size_t componentsOf(int colorSpace) {
  switch (colorSpace) {
    case TJCS_GRAY: return 1;
    case TJCS_RGB:
    case TJCS_YCbCr: return 3;
    case TJCS_CMYK:
    case TJCS_YCCK: return 4;
    default: return 0;
  }
}

int pixelFormatOf(std::size_t components) {
  switch (components) {
    case 1: return TJPF_GRAY;
    case 3: return TJPF_RGB;
    case 4: return TJPF_CMYK;
    default: throw std::runtime_error("components");
  }
}

// The library has more factors; these are the fast ones.
PDFPixelSize smallestDecoded(PDFPixelSize full, PDFPixelSize least) {
  for (const std::size_t divisor : {8U, 4U, 2U}) {
    const PDFPixelSize size{(full.width + divisor - 1) / divisor, (full.height + divisor - 1) / divisor};
    if (size.width >= least.width && size.height >= least.height) return size;
  }
  return full;
}

// How much of the old pixels, counted from `first`, goes into one new one.
struct Share {
  std::size_t first = 0;
  std::vector<float> weights;
};

std::vector<Share> shares(std::size_t from, std::size_t to) {
  std::vector<Share> all(to);
  const double step = static_cast<double>(from) / static_cast<double>(to);
  for (std::size_t i = 0; i < to; ++i) {
    const double begin = static_cast<double>(i) * step;
    const double end = std::min(begin + step, static_cast<double>(from));
    all[i].first = static_cast<std::size_t>(begin);
    for (std::size_t old = all[i].first; old < from && static_cast<double>(old) < end; ++old) {
      const double covered = std::min(end, static_cast<double>(old + 1)) - std::max(begin, static_cast<double>(old));
      all[i].weights.push_back(static_cast<float>(covered / step));
    }
  }
  return all;
}

void reduceRow(const std::uint8_t* row, std::size_t components, const std::vector<Share>& columns, float* reduced) {
  for (const Share& share : columns) {
    for (std::size_t component = 0; component < components; ++component) {
      const std::uint8_t* sample = row + share.first * components + component;
      float sum = 0;
      for (const float weight : share.weights) {
        sum += weight * static_cast<float>(*sample);
        sample += components;
      }
      *reduced++ = sum;
    }
  }
}

}  // namespace

std::optional<PDFSamples> decodedJPEG(std::string_view jpeg, PDFPixelSize size, PDFPixelSize least) {
  const Codec codec(tjInitDecompress());
  if (!codec) throw std::bad_alloc();
  int width = 0;
  int height = 0;
  int subsampling = 0;
  int colorSpace = 0;
  if (tjDecompressHeader3(codec.get(), bytesOf(jpeg), jpeg.size(), &width, &height, &subsampling, &colorSpace) != 0)
    return std::nullopt;
  const PDFPixelSize full{static_cast<std::size_t>(width), static_cast<std::size_t>(height)};
  const std::size_t components = componentsOf(colorSpace);
  if (components == 0 || full != size || full.width * full.height > mostPictureSamples / components)
    return std::nullopt;
  PDFSamples samples{smallestDecoded(full, least), components, {}};
  samples.bytes.resize(samples.size.width * samples.size.height * components);
  const int result =
      tjDecompress2(codec.get(), bytesOf(jpeg), jpeg.size(), reinterpret_cast<unsigned char*>(samples.bytes.data()),
                    static_cast<int>(samples.size.width), 0, static_cast<int>(samples.size.height),
                    pixelFormatOf(components), TJFLAG_LIMITSCANS);
  // A warning is a damaged picture: it stays as it is, and readers make of it what they did before.
  return result == 0 ? std::optional(std::move(samples)) : std::nullopt;
}

std::string encodedJPEG(const PDFSamples& samples, int quality) {
  const Codec codec(tjInitCompress());
  if (!codec) throw std::bad_alloc();
  unsigned char* bytes = nullptr;
  unsigned long count = 0;
  const int subsampling = samples.components == 1 ? TJSAMP_GRAY : TJSAMP_420;
  const int result = tjCompress2(codec.get(), bytesOf(samples.bytes), static_cast<int>(samples.size.width), 0,
                                 static_cast<int>(samples.size.height), pixelFormatOf(samples.components), &bytes,
                                 &count, subsampling, quality, TJFLAG_PROGRESSIVE);
  const std::unique_ptr<unsigned char, Freeing> owner(bytes);
  if (result != 0) throw std::runtime_error(tjGetErrorStr2(codec.get()));
  return {reinterpret_cast<const char*>(bytes), count};
}

PDFSamples reduced(PDFSamples samples, PDFPixelSize size) {
  if (size == samples.size) return samples;
  const std::size_t components = samples.components;
  const std::vector<Share> columns = shares(samples.size.width, size.width);
  PDFSamples result{size, components, {}};
  result.bytes.reserve(size.width * size.height * components);
  std::vector<float> row(size.width * components);
  std::vector<float> sum(row.size());
  const auto* const source = reinterpret_cast<const std::uint8_t*>(samples.bytes.data());
  for (const Share& lines : shares(samples.size.height, size.height)) {
    std::ranges::fill(sum, 0.5F);
    for (std::size_t i = 0; i < lines.weights.size(); ++i) {
      reduceRow(source + (lines.first + i) * samples.size.width * components, components, columns, row.data());
      for (std::size_t j = 0; j < row.size(); ++j) sum[j] += lines.weights[i] * row[j];
    }
    for (const float value : sum)
      result.bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(std::min(value, 255.0F))));
  }
  return result;
}

}  // namespace quirn::platform
