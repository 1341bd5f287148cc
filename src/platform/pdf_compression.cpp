// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_compression.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/ordered_tasks.h"
#include "platform/pdf_image_source.h"
#include "platform/pdf_image_uses.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_object_graph.h"
#include "platform/pdf_page_content.h"
#include "platform/pdf_sink.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

constexpr std::size_t largestRepacked = std::size_t{64} << 20;  // bytes, decoded

// As many pixels as a screen shows of a picture; all where it isn't known how large that is.
PDFPixelSize mostPixels(const PDFImageUses& uses, Object image) {
  static constexpr double any = 1e6;
  const auto extent = uses.largest(image).value_or(PDFImageUses::Extent{any, any});
  const auto pixels = [](double points) {
    constexpr double pointsPerInch = 72;
    constexpr double rounding = 0.01;  // of the numbers in the content
    return static_cast<std::size_t>(std::clamp(points / pointsPerInch * screenPixelsPerInch + rounding, 1.0, any));
  };
  return {pixels(extent.width), pixels(extent.height)};
}

class Compression {
 public:
  Compression(PDFDocument::Internals& internals, const std::stop_token& stop) : internals_(internals), stop_(stop) {}

  void run();

 private:
  void findUses();
  void findMasks(const std::vector<Object>& objects);
  void pack(Object stream);
  void packPicture(Object image, PDFStoredImage stored);
  void packStream(Object stream);

  // What becomes of a stream: a picture if it is to be replaced, or other content.
  using Packed = std::variant<std::optional<PDFScreenImage>, std::string>;
  void begin(Object stream, std::function<Packed()> work);
  void takeOldest();

  PDFDocument::Internals& internals_;
  const std::stop_token& stop_;
  PDFImageUses uses_;
  std::map<QPDFObjGen, PDFPixelSize> masks_;  // soft masks, and how large they are needed
  std::deque<Object> pending_;                // whose results come next
  OrderedTasks<Packed> results_;
};

void Compression::run() {
  shareEqualObjects(*internals_.qpdf);
  findUses();
  const std::vector<Object> objects = reachableObjects(*internals_.qpdf);
  findMasks(objects);
  for (Object object : objects) {
    if (stop_.stop_requested()) return;
    if (object.isStream()) pack(object);
  }
  while (!results_.isEmpty()) takeOldest();
}

void Compression::begin(Object stream, std::function<Packed()> work) {
  const auto most = static_cast<std::size_t>(activeProcessorCount()) + 1;
  while (results_.size() >= most) takeOldest();
  pending_.push_back(std::move(stream));
  results_.begin(std::move(work));
}

void Compression::takeOldest() {
  Object stream = std::move(pending_.front());
  pending_.pop_front();
  const Packed packed = results_.next();
  if (const auto* picture = std::get_if<std::optional<PDFScreenImage>>(&packed)) {
    if (*picture) replacePicture(stream, **picture);
    return;
  }
  long long stored = 0;
  stream.getDict().getKey("/Length").getValueAsInt(stored);
  const auto& content = std::get<std::string>(packed);
  if (std::cmp_less(content.size(), stored))
    stream.replaceStreamData(content, Object::newName("/FlateDecode"), Object::newNull());
}

void Compression::findUses() {
  for (const Object& page : internals_.pages) {
    if (stop_.stop_requested()) return;
    uses_.addPage(page);
  }
}

// A mask is needed at the size of its picture.
void Compression::findMasks(const std::vector<Object>& objects) {
  for (Object image : objects) {
    if (!isImage(image)) continue;
    Object mask = image.getDict().getKey("/SMask");
    if (!mask.isStream()) continue;
    const PDFPixelSize most = mostPixels(uses_, image);
    PDFPixelSize& needed = masks_[mask.getObjGen()];
    needed = {std::max(needed.width, most.width), std::max(needed.height, most.height)};
  }
}

void Compression::pack(Object stream) {
  auto stored = isImage(stream) ? storedImage(stream) : std::nullopt;
  if (stored) {
    packPicture(stream, std::move(*stored));
  } else {
    packStream(stream);
  }
}

void Compression::packPicture(Object image, PDFStoredImage stored) {
  const auto mask = masks_.find(image.getObjGen());
  const bool isMask = mask != masks_.end();
  const PDFPixelSize most = isMask ? mask->second : mostPixels(uses_, image);
  begin(image, [stored = std::move(stored), most, isMask]() -> Packed {
    return isMask ? screenMask(stored, most) : screenImage(stored, most);
  });
}

void Compression::packStream(Object stream) {
  // Programs look for the metadata in files that they don't understand otherwise.
  if (stream.getDict().getKey("/Type").isNameAndEquals("/Metadata")) return;
  if (auto decoded = wholeDecodedStream(stream, largestRepacked))
    begin(stream, [decoded = std::move(*decoded)]() -> Packed { return deflated(decoded); });
}

}  // namespace

void compressForScreen(PDFDocument& document, const std::stop_token& stop) {
  document.internals().guarded(PDFError::Kind::unreadable, [&] { Compression(document.internals(), stop).run(); });
}

void writeCompressed(const PDFDocument& document, int descriptor) {
  const PDFDocument::Internals& internals = document.internals();
  internals.guarded(PDFError::Kind::writeFailed, [&] {
    PDFDocument::Internals::requireReadable(internals.pages);
    document.internals().mend();
    PDFSink sink(descriptor);
    QPDFWriter writer(*internals.qpdf);
    writer.setOutputPipeline(&sink);
    writer.setDecodeLevel(qpdf_dl_none);
    writer.setObjectStreamMode(qpdf_o_generate);
    if (!internals.qpdf->isEncrypted()) writer.setDeterministicID(true);
    writer.write();
    sink.flush();
  });
}

}  // namespace quirn::platform
