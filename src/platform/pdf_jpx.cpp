// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_jpx.h"

#include <openjpeg.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace quirn::platform {
namespace {

// The library takes four bytes for each while it decodes.
constexpr std::size_t mostSamples = std::size_t{1} << 26;
constexpr unsigned mostBits = 16;
constexpr std::string_view containerBegin("\0\0\0\x0CjP  ", 8);

struct ImageFreeing {
  void operator()(opj_image_t* image) const { opj_image_destroy(image); }
};
// The library has one type for both.
struct StreamFreeing {
  void operator()(opj_stream_t* stream) const { opj_stream_destroy(stream); }
};
struct CodecFreeing {
  void operator()(opj_codec_t* codec) const { opj_destroy_codec(codec); }
};

struct Cursor {
  std::string_view bytes;
  std::size_t position = 0;
};

OPJ_SIZE_T readSome(void* buffer, OPJ_SIZE_T count, void* data) {
  Cursor& cursor = *static_cast<Cursor*>(data);
  const std::string_view piece = cursor.bytes.substr(cursor.position, count);
  if (piece.empty()) return static_cast<OPJ_SIZE_T>(-1);
  std::memcpy(buffer, piece.data(), piece.size());
  cursor.position += piece.size();
  return piece.size();
}

OPJ_BOOL seekTo(OPJ_OFF_T position, void* data) {
  Cursor& cursor = *static_cast<Cursor*>(data);
  if (position < 0 || std::cmp_greater(position, cursor.bytes.size())) return OPJ_FALSE;
  cursor.position = static_cast<std::size_t>(position);
  return OPJ_TRUE;
}

OPJ_OFF_T skipSome(OPJ_OFF_T count, void* data) {
  Cursor& cursor = *static_cast<Cursor*>(data);
  const auto position = static_cast<OPJ_OFF_T>(cursor.position);
  if (count > static_cast<OPJ_OFF_T>(cursor.bytes.size()) - position || !seekTo(position + count, data)) return -1;
  return count;
}

class Decoder {
 public:
  // `halvings` of the resolution are left out.
  explicit Decoder(std::string_view file, unsigned halvings = 0)
      : halvings_(halvings),
        cursor_{file},
        stream_(opj_stream_create(OPJ_J2K_STREAM_CHUNK_SIZE, OPJ_TRUE)),
        codec_(opj_create_decompress(file.starts_with(containerBegin) ? OPJ_CODEC_JP2 : OPJ_CODEC_J2K)) {
    if (!stream_ || !codec_) throw std::bad_alloc();
    opj_stream_set_user_data(stream_.get(), &cursor_, nullptr);
    opj_stream_set_user_data_length(stream_.get(), file.size());
    opj_stream_set_read_function(stream_.get(), &readSome);
    opj_stream_set_skip_function(stream_.get(), &skipSome);
    opj_stream_set_seek_function(stream_.get(), &seekTo);
  }
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;

  std::optional<JPXHeader> readHeader() {
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    parameters.cp_reduce = halvings_;
    opj_image_t* image = nullptr;
    const bool isRead = opj_setup_decoder(codec_.get(), &parameters) == OPJ_TRUE &&
                        opj_read_header(stream_.get(), codec_.get(), &image) == OPJ_TRUE;
    image_.reset(image);
    if (!isRead || !isPlain()) return std::nullopt;
    const JPXHeader header{size(), components().size()};
    return header.size.width * header.size.height <= mostSamples / components().size() ? std::optional(header)
                                                                                       : std::nullopt;
  }

  // After the header.
  std::optional<PDFSamples> decode(JPXColors colors) {
    if (opj_decode(codec_.get(), stream_.get(), image_.get()) != OPJ_TRUE || !isPlain()) return std::nullopt;
    const OPJ_COLOR_SPACE expected = components().size() == 1 ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB;
    if (colors == JPXColors::ofFile && image_->color_space != expected) return std::nullopt;
    PDFSamples samples{{components().front().w, components().front().h}, components().size(), {}};
    samples.bytes.resize(samples.size.width * samples.size.height * samples.components);
    for (std::size_t i = 0; i < samples.components; ++i) {
      const opj_image_comp_t& component = components()[i];
      if (component.data == nullptr || component.w != samples.size.width || component.h != samples.size.height)
        return std::nullopt;
      take(component, i, samples);
    }
    return samples;
  }

 private:
  PDFPixelSize size() const { return {image_->x1 - image_->x0, image_->y1 - image_->y0}; }
  std::span<const opj_image_comp_t> components() const { return {image_->comps, image_->numcomps}; }

  bool isPlain() const {
    if (image_->x1 <= image_->x0 || image_->y1 <= image_->y0) return false;
    return (components().size() == 1 || components().size() == 3) &&
           std::ranges::all_of(components(), [](const opj_image_comp_t& component) {
             return component.dx == 1 && component.dy == 1 && component.sgnd == 0 && component.alpha == 0 &&
                    component.prec >= 1 && component.prec <= mostBits;
           });
  }

  static void take(const opj_image_comp_t& component, std::size_t place, PDFSamples& samples) {
    const int most = (1 << component.prec) - 1;
    const std::span<const OPJ_INT32> values(component.data, samples.size.width * samples.size.height);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const int value = std::clamp(values[i], 0, most);
      samples.bytes[i * samples.components + place] = static_cast<char>((value * 255 + most / 2) / most);
    }
  }

  unsigned halvings_;
  Cursor cursor_;
  std::unique_ptr<opj_stream_t, StreamFreeing> stream_;
  std::unique_ptr<opj_codec_t, CodecFreeing> codec_;
  std::unique_ptr<opj_image_t, ImageFreeing> image_;
};

}  // namespace

std::optional<JPXHeader> jpxHeader(std::string_view file) {
  return Decoder(file).readHeader();
}

std::optional<PDFSamples> decodedJPX(std::string_view file, PDFPixelSize least, JPXColors colors) {
  const auto header = jpxHeader(file);
  if (!header) return std::nullopt;
  for (unsigned halvings = 3; halvings > 0; --halvings) {
    if (header->size.width >> halvings < least.width || header->size.height >> halvings < least.height) continue;
    Decoder decoder(file, halvings);
    // Refused where the file has fewer resolutions.
    if (decoder.readHeader()) return decoder.decode(colors);
  }
  Decoder decoder(file);
  return decoder.readHeader() ? decoder.decode(colors) : std::nullopt;
}

}  // namespace quirn::platform
