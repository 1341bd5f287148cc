// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_jpeg.h"

#include <turbojpeg.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <utility>

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

// The library leaves out the higher frequencies of each block by itself, which shows at the edges of blocks: half as
// many pixels again as are needed hide that. It has more factors; these are the fast ones.
PDFPixelSize smallestDecoded(PDFPixelSize full, PDFPixelSize least) {
  for (const std::size_t divisor : {8U, 4U, 2U}) {
    const PDFPixelSize size{(full.width + divisor - 1) / divisor, (full.height + divisor - 1) / divisor};
    if (size.width * 2 >= least.width * 3 && size.height * 2 >= least.height * 3) return size;
  }
  return full;
}

struct Header {
  PDFPixelSize size;
  int subsampling = 0;
  int colorSpace = 0;
};

// Nothing for a picture of another size than the document states, and for one that is too large.
std::optional<Header> headerOf(tjhandle codec, std::string_view jpeg, PDFPixelSize size) {
  int width = 0;
  int height = 0;
  Header header;
  if (tjDecompressHeader3(codec, bytesOf(jpeg), jpeg.size(), &width, &height, &header.subsampling,
                          &header.colorSpace) != 0)
    return std::nullopt;
  header.size = {static_cast<std::size_t>(width), static_cast<std::size_t>(height)};
  const std::size_t components = componentsOf(header.colorSpace);
  if (components == 0 || header.size != size || size.width * size.height > mostPictureSamples / components)
    return std::nullopt;
  return header;
}

constexpr int planeCount = 3;

// Brightness and the two colour differences, each a picture of one component. At its edges, a plane may be a pixel
// larger than what it has of the picture.
struct Planes {
  PDFPixelSize size;  // of the picture
  int subsampling = 0;
  std::array<PDFSamples, planeCount> all{};

  PDFPixelSize planeSize(int plane) const {
    return {static_cast<std::size_t>(tjPlaneWidth(plane, static_cast<int>(size.width), subsampling)),
            static_cast<std::size_t>(tjPlaneHeight(plane, static_cast<int>(size.height), subsampling))};
  }

  // How many pixels of the picture one of the plane covers.
  PDFPixelStep pixelSize(int plane) const {
    if (plane == 0) return {1, 1};
    return {tjMCUWidth[subsampling] / 8.0, tjMCUHeight[subsampling] / 8.0};
  }
};

std::optional<Planes> decodedPlanes(tjhandle codec, std::string_view jpeg, const Header& header, PDFPixelSize least) {
  Planes planes{smallestDecoded(header.size, least), header.subsampling};
  std::array<unsigned char*, planeCount> rows{};
  for (int i = 0; i < planeCount; ++i) {
    const PDFPixelSize size = planes.planeSize(i);
    PDFSamples& plane = planes.all.at(static_cast<std::size_t>(i));
    plane = {size, 1, std::string(size.width * size.height, '\0')};
    rows.at(static_cast<std::size_t>(i)) = reinterpret_cast<unsigned char*>(plane.bytes.data());
  }
  const int result =
      tjDecompressToYUVPlanes(codec, bytesOf(jpeg), jpeg.size(), rows.data(), static_cast<int>(planes.size.width),
                              nullptr, static_cast<int>(planes.size.height), TJFLAG_LIMITSCANS);
  return result == 0 ? std::optional(std::move(planes)) : std::nullopt;
}

Planes reducedPlanes(Planes planes, PDFPixelSize size) {
  Planes result{size, TJSAMP_420};
  const double x = static_cast<double>(planes.size.width) / static_cast<double>(size.width);
  const double y = static_cast<double>(planes.size.height) / static_cast<double>(size.height);
  for (int i = 0; i < planeCount; ++i) {
    const auto index = static_cast<std::size_t>(i);
    const PDFPixelStep from = planes.pixelSize(i);
    const PDFPixelStep to = result.pixelSize(i);
    result.all.at(index) =
        reduced(std::move(planes.all.at(index)), result.planeSize(i), {x * to.x / from.x, y * to.y / from.y});
  }
  return result;
}

// What the library has written, and freed.
std::string taken(tjhandle codec, int result, unsigned char* bytes, unsigned long count) {
  const std::unique_ptr<unsigned char, Freeing> owner(bytes);
  if (result != 0) throw std::runtime_error(tjGetErrorStr2(codec));
  return {reinterpret_cast<const char*>(bytes), count};
}

std::string encodedPlanes(const Planes& planes, int quality) {
  const Codec codec(tjInitCompress());
  if (!codec) throw std::bad_alloc();
  std::array<const unsigned char*, planeCount> rows{};
  for (std::size_t i = 0; i < rows.size(); ++i) rows.at(i) = bytesOf(planes.all.at(i).bytes);
  unsigned char* bytes = nullptr;
  unsigned long count = 0;
  const int result = tjCompressFromYUVPlanes(codec.get(), rows.data(), static_cast<int>(planes.size.width), nullptr,
                                             static_cast<int>(planes.size.height), TJSAMP_420, &bytes, &count, quality,
                                             TJFLAG_PROGRESSIVE);
  return taken(codec.get(), result, bytes, count);
}

}  // namespace

std::optional<PDFSamples> decodedJPEG(std::string_view jpeg, PDFPixelSize size, PDFPixelSize least) {
  const Codec codec(tjInitDecompress());
  if (!codec) throw std::bad_alloc();
  const auto header = headerOf(codec.get(), jpeg, size);
  if (!header) return std::nullopt;
  const std::size_t components = componentsOf(header->colorSpace);
  PDFSamples samples{smallestDecoded(size, least), components, {}};
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
  return taken(codec.get(), result, bytes, count);
}

std::optional<PDFReducedJPEG> reducedJPEG(std::string_view jpeg, PDFPixelSize size, PDFPixelSize most, int quality) {
  const Codec codec(tjInitDecompress());
  if (!codec) throw std::bad_alloc();
  const auto header = headerOf(codec.get(), jpeg, size);
  if (!header || header->colorSpace != TJCS_YCbCr) return std::nullopt;
  const PDFPixelSize target{std::min(size.width, most.width), std::min(size.height, most.height)};
  auto planes = decodedPlanes(codec.get(), jpeg, *header, target);
  if (!planes) return std::nullopt;
  return PDFReducedJPEG{encodedPlanes(reducedPlanes(std::move(*planes), target), quality), target};
}

}  // namespace quirn::platform
