// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_image_source.h"

#include <algorithm>
#include <qpdf/Buffer.hh>
#include <string>
#include <utility>
#include <vector>

#include "platform/pdf_jpx.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

constexpr std::size_t leastStored = 1024;  // bytes
constexpr std::size_t longestJPEGSide = 65'500;

// How a colour space lays out its samples; no components where JPEG has no place for it.
struct Layout {
  std::size_t components = 0;
  std::string palette;
};

std::size_t componentsOf(Object space) {
  const std::string name = space.isName() ? space.getName()
                           : space.isArray() && space.getArrayNItems() > 0 && space.getArrayItem(0).isName()
                               ? space.getArrayItem(0).getName()
                               : std::string();
  if (name == "/DeviceGray" || name == "/CalGray" || name == "/G" || name == "/Separation") return 1;
  if (name == "/DeviceRGB" || name == "/CalRGB" || name == "/RGB") return 3;
  if (name == "/DeviceCMYK" || name == "/CMYK") return 4;
  if (name != "/ICCBased" || space.getArrayNItems() < 2 || !space.getArrayItem(1).isStream()) return 0;
  const long long count = space.getArrayItem(1).getDict().getKey("/N").isInteger()
                              ? space.getArrayItem(1).getDict().getKey("/N").getIntValue()
                              : 0;
  return count == 1 || count == 3 || count == 4 ? static_cast<std::size_t>(count) : 0;
}

std::string bytesOf(Object object) {
  if (object.isString()) return object.getStringValue();
  constexpr std::size_t largestPalette = std::size_t{256} * 4;
  return object.isStream() ? decodedStream(object, largestPalette) : std::string();
}

Layout layoutOf(Object space) {
  if (!space.isArray() || space.getArrayNItems() != 4 || !space.getArrayItem(0).isNameAndEquals("/Indexed"))
    return {componentsOf(space), {}};
  Layout layout{componentsOf(space.getArrayItem(1)), bytesOf(space.getArrayItem(3))};
  const bool isWhole = layout.components > 0 && layout.palette.size() >= layout.components;
  return isWhole ? layout : Layout{};
}

bool hasOwnMeaning(Object dictionary) {
  Object mask = dictionary.getKey("/SMask");
  return dictionary.getKey("/ImageMask").isBool() || dictionary.getKey("/Mask").isArray() ||
         dictionary.hasKey("/Matte") || dictionary.hasKey("/SMaskInData") ||
         (mask.isStream() && mask.getDict().hasKey("/Matte"));
}

std::vector<Object> listOf(Object value) {
  if (value.isNull()) return {};
  return value.isArray() ? value.getArrayAsVector() : std::vector<Object>{value};
}

bool isJPEG(Object filter) {
  return filter.isNameAndEquals("/DCTDecode") || filter.isNameAndEquals("/DCT");
}

bool isCodedAsJPX(Object image) {
  std::vector<Object> filters = listOf(image.getDict().getKey("/Filter"));
  return !filters.empty() && filters.back().isNameAndEquals("/JPXDecode");
}

std::string rawBytes(Object stream) {
  const auto data = stream.getRawStreamData();
  return {reinterpret_cast<const char*>(data->getBuffer()), data->getSize()};
}

// Whether the document and not the JPEG file itself says how its colours are mixed.
bool statesTransform(Object dictionary) {
  return std::ranges::any_of(listOf(dictionary.getKey("/DecodeParms")), [](Object parameters) {
    return parameters.isDictionary() && parameters.hasKey("/ColorTransform");
  });
}

// The file of the innermost coding, with the others undone.
std::optional<std::string> innerBytes(Object image, std::vector<Object> filters) {
  if (filters.size() == 1) return rawBytes(image);
  filters.pop_back();
  std::vector<Object> parameters = listOf(image.getDict().getKey("/DecodeParms"));
  if (!parameters.empty()) parameters.pop_back();
  Object outer = image.copyStream();
  outer.getDict().replaceKey("/Filter", Object::newArray(filters));
  outer.getDict().replaceKey("/DecodeParms", Object::newArray(parameters));
  return wholeDecodedStream(outer, mostPictureSamples);
}

// The same of JPEG 2000, which may be what knows the colours.
std::optional<PDFStoredImage> jpxImage(Object image, const std::vector<Object>& filters, long long stored) {
  auto bytes = innerBytes(image, filters);
  const auto header = bytes ? jpxHeader(*bytes) : std::nullopt;
  if (!header || header->size.width > longestJPEGSide || header->size.height > longestJPEGSide) return std::nullopt;
  Object space = image.getDict().getKey("/ColorSpace");
  if (!space.isNull() && componentsOf(space) != header->components) return std::nullopt;
  return PDFStoredImage{.coding = PDFStoredImage::Coding::jpx,
                        .bytes = std::move(*bytes),
                        .storedBytes = static_cast<std::size_t>(stored),
                        .size = header->size,
                        .components = header->components,
                        .colors = space.isNull() ? JPXColors::ofFile : JPXColors::ofDocument};
}

// What the dictionary says; nothing unless all of it is plain.
std::optional<PDFStoredImage> describedImage(Object dictionary) {
  long long width = 0;
  long long height = 0;
  long long bits = 8;
  dictionary.getKey("/Width").getValueAsInt(width);
  dictionary.getKey("/Height").getValueAsInt(height);
  dictionary.getKey("/BitsPerComponent").getValueAsInt(bits);
  const auto isSide = [](long long side) { return side >= 1 && std::cmp_less_equal(side, longestJPEGSide); };
  if (!isSide(width) || !isSide(height)) return std::nullopt;
  if (bits != 2 && bits != 4 && bits != 8 && bits != 16) return std::nullopt;
  Layout layout = layoutOf(dictionary.getKey("/ColorSpace"));
  if (layout.components == 0 || (!layout.palette.empty() && (bits == 16 || dictionary.hasKey("/Decode"))))
    return std::nullopt;
  const PDFPixelSize size{static_cast<std::size_t>(width), static_cast<std::size_t>(height)};
  if (size.width * size.height > mostPictureSamples / layout.components) return std::nullopt;
  return PDFStoredImage{.size = size,
                        .components = layout.components,
                        .bitsPerComponent = static_cast<std::size_t>(bits),
                        .palette = std::move(layout.palette)};
}

}  // namespace

bool isImage(Object stream) {
  return stream.isStream() && stream.getDict().getKey("/Subtype").isNameAndEquals("/Image");
}

std::optional<PDFStoredImage> storedImage(Object image) {
  Object dictionary = image.getDict();
  long long stored = 0;
  dictionary.getKey("/Length").getValueAsInt(stored);
  if (hasOwnMeaning(dictionary) || std::cmp_less(stored, leastStored)) return std::nullopt;
  const std::vector<Object> filters = listOf(dictionary.getKey("/Filter"));
  if (isCodedAsJPX(image)) return jpxImage(image, filters, stored);
  auto result = describedImage(dictionary);
  if (!result) return std::nullopt;
  result->storedBytes = static_cast<std::size_t>(stored);
  const bool isCodedAsJPEG = !filters.empty() && isJPEG(filters.back());
  if (isCodedAsJPEG && (!result->palette.empty() || result->bitsPerComponent != 8 || statesTransform(dictionary)))
    return std::nullopt;
  auto bytes = isCodedAsJPEG ? innerBytes(image, filters) : wholeDecodedStream(image, mostPictureSamples * 2);
  if (!bytes) return std::nullopt;
  result->coding = isCodedAsJPEG ? PDFStoredImage::Coding::jpeg : PDFStoredImage::Coding::samples;
  result->bytes = std::move(*bytes);
  return result;
}

void replacePicture(Object image, const PDFScreenImage& picture) {
  const bool isNowJPEG = picture.coding == PDFScreenImage::Coding::jpeg;
  const bool wasJPX = isCodedAsJPX(image);
  image.replaceStreamData(picture.bytes, Object::newName(isNowJPEG ? "/DCTDecode" : "/FlateDecode"), Object::newNull());
  Object dictionary = image.getDict();
  dictionary.replaceKey("/Width", Object::newInteger(static_cast<long long>(picture.size.width)));
  dictionary.replaceKey("/Height", Object::newInteger(static_cast<long long>(picture.size.height)));
  dictionary.replaceKey("/BitsPerComponent", Object::newInteger(static_cast<long long>(picture.bitsPerComponent)));
  Object space = dictionary.getKey("/ColorSpace");
  const bool isIndexed = space.isArray() && space.getArrayItem(0).isNameAndEquals("/Indexed");
  if (space.isNull())
    dictionary.replaceKey("/ColorSpace", Object::newName(picture.components == 1 ? "/DeviceGray" : "/DeviceRGB"));
  if (isNowJPEG && isIndexed) dictionary.replaceKey("/ColorSpace", space.getArrayItem(1));
  // JPEG 2000 takes no notice of it (ISO 32000-1, 7.4.9), as all others do.
  if (wasJPX) dictionary.removeKey("/Decode");
  // Other forms of the picture, for other media.
  dictionary.removeKey("/Alternates");
}

}  // namespace quirn::platform
