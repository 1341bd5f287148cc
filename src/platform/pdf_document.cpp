// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_document.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <system_error>
#include <utility>

#include "platform/file_descriptor.h"
#include "platform/pdf_flate_filter.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_library.h"
#include "platform/pdf_page_content.h"
#include "platform/pdf_sink.h"

namespace quirn::platform {
namespace {

constexpr PDFRectangle usLetter{.left = 0, .bottom = 0, .right = 612, .top = 792};

// Null if the password doesn't open the file.
std::unique_ptr<QPDF> opened(const std::shared_ptr<PDFSource>& source, const std::string& password) {
  boundFlateStreams();
  auto qpdf = std::make_unique<QPDF>();
  qpdf->setSuppressWarnings(true);
  try {
    qpdf->processInputSource(source, password.c_str());
  } catch (const QPDFExc& error) {
    if (error.getErrorCode() != qpdf_e_password) throw;
    source->check();
    return nullptr;
  }
  return qpdf;
}

// Told by their bytes, so that most streams are never looked at any closer.
bool isStream(PDFRawObjects& objects, PDFReference reference) {
  static const PDFRewriting nowhere{.numberOf = [](PDFReference) { return 0; },
                                    .integerAt = [](PDFReference) { return std::optional<std::int64_t>(0); },
                                    .stringText = {}};
  std::string text;
  const auto object = objects.scan(reference, nowhere, text);
  return object && object->isStream;
}

// The same of a page about which nothing can have to be mended.
bool isPlain(PDFRawObjects& objects, QPDFObjectHandle page) {
  const std::string text = objects.textOf({page.getObjectID(), page.getGeneration()}).value_or("");
  if (text.find("/MediaBox[") == std::string::npos) return false;
  constexpr std::string_view key = "/Contents ";
  const std::size_t at = text.find(key);
  if (at == std::string::npos) return text.find("/Contents") == std::string::npos;
  PDFReference contents;
  std::from_chars(text.data() + at + key.size(), text.data() + text.size(), contents.number);
  return isStream(objects, contents);
}

}  // namespace

void PDFDocument::Internals::guarded(PDFError::Kind kind, const std::function<void()>& work) const {
  const auto checkSource = [this] {
    try {
      if (source) source->check();
    } catch (const std::system_error& error) {
      throw PDFError(PDFError::Kind::readFailed, error.what());
    }
  };
  try {
    work();
  } catch (const PDFError&) {
    checkSource();
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const PDFStreamTooLarge&) {
    throw PDFError(PDFError::Kind::tooLarge, "a stream");
  } catch (const std::exception& error) {
    checkSource();
    throw PDFError(kind, error.what());
  }
  checkSource();
}

void PDFDocument::Internals::requireReadable(std::span<const QPDFObjectHandle> pages) {
  for (QPDFObjectHandle page : pages) {
    if (!page.isDictionary()) throw PDFError(PDFError::Kind::unreadable, "a page that is none");
  }
}

void PDFDocument::Internals::findPages() {
  PDFPageTree tree = readPageTree(*qpdf, raw.get());
  if (!tree.isSound) return setPages(tree.pages);
  pages = std::move(tree.pages);
  pageTree = std::move(tree.numbers);
}

void PDFDocument::Internals::setPages(const std::vector<QPDFObjectHandle>& newPages) {
  raw.reset();
  QPDFObjectHandle root = newPageTree(*qpdf, newPages);
  qpdf->getRoot().replaceKey("/Pages", root);
  pages = newPages;
  pageTree = {root.getObjectID()};
  for (QPDFObjectHandle page : pages) pageTree.insert(page.getObjectID());
}

void PDFDocument::Internals::mend() {
  bool isChanged = false;
  for (const QPDFObjectHandle& page : pages) isChanged |= mendPage(page);
  if (isChanged) raw.reset();
  qpdf->getRoot().replaceKey("/Type", QPDFObjectHandle::newName("/Catalog"));
  // A damaged file may have none; where there is one, the writer sets it right.
  qpdf->getTrailer().replaceKey("/Size", QPDFObjectHandle::newInteger(1));
}

bool PDFDocument::Internals::mendPage(QPDFObjectHandle page) const {
  if (raw && isPlain(*raw, page)) return false;
  bool isChanged = false;
  if (!rectangleOf(pageAttribute(page, "/MediaBox"))) {
    page.replaceKey("/MediaBox", arrayOf(usLetter));
    isChanged = true;
  }
  QPDFObjectHandle contents = page.getKey("/Contents");
  if (contents.isArray()) {
    const std::vector<QPDFObjectHandle> streams = contentStreams(page);
    if (std::cmp_equal(streams.size(), contents.getArrayNItems())) return isChanged;
    page.replaceKey("/Contents", QPDFObjectHandle::newArray(streams));
    return true;
  }
  if (contents.isStream() || contents.isNull()) return isChanged;
  page.removeKey("/Contents");
  return true;
}

QPDFObjectHandle pageAttribute(QPDFObjectHandle page, const std::string& key) {
  std::set<QPDFObjGen> seen;
  while (page.isDictionary() && seen.insert(page.getObjGen()).second) {
    if (QPDFObjectHandle value = page.getKey(key); !value.isNull()) return value;
    page = page.getKey("/Parent");
  }
  return QPDFObjectHandle::newNull();
}

std::optional<PDFRectangle> rectangleOf(QPDFObjectHandle object) {
  if (!object.isArray() || object.getArrayNItems() < 4) return std::nullopt;
  double corners[4];
  for (int i = 0; i < 4; ++i) {
    if (!object.getArrayItem(i).getValueAsNumber(corners[i]) || !std::isfinite(corners[i])) return std::nullopt;
  }
  const PDFRectangle box{.left = std::min(corners[0], corners[2]),
                         .bottom = std::min(corners[1], corners[3]),
                         .right = std::max(corners[0], corners[2]),
                         .top = std::max(corners[1], corners[3])};
  return box.width() > 0 && box.height() > 0 ? std::optional(box) : std::nullopt;
}

PDFDocument::PDFDocument(std::unique_ptr<Internals> internals) : internals_(std::move(internals)) {}

PDFDocument::PDFDocument(ReadableFile file, const std::string& password) : internals_(std::make_unique<Internals>()) {
  internals_->source = std::make_shared<PDFSource>(std::move(file));
  unlock(password);
}

PDFDocument::~PDFDocument() = default;
PDFDocument::PDFDocument(PDFDocument&& other) noexcept = default;
PDFDocument& PDFDocument::operator=(PDFDocument&& other) noexcept = default;

bool PDFDocument::isLocked() const {
  return internals_->isLocked();
}

bool PDFDocument::unlock(const std::string& password) {
  if (!isLocked()) return true;
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    internals_->qpdf = opened(internals_->source, password);
    if (isLocked()) return;
    internals_->raw = std::make_unique<PDFRawObjects>(*internals_->qpdf, *internals_->source);
    internals_->findPages();
  });
  return !isLocked();
}

std::size_t PDFDocument::pageCount() const {
  return internals_->pages.size();
}

PDFRectangle PDFDocument::box(std::size_t page, PDFBox box) const {
  QPDFObjectHandle object = internals_->pages.at(page);
  PDFRectangle media = usLetter;
  PDFRectangle result;
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    media = rectangleOf(pageAttribute(object, "/MediaBox")).value_or(usLetter);
    result = box == PDFBox::media ? media : rectangleOf(pageAttribute(object, "/CropBox")).value_or(media);
  });
  const PDFRectangle cut{.left = std::max(result.left, media.left),
                         .bottom = std::max(result.bottom, media.bottom),
                         .right = std::min(result.right, media.right),
                         .top = std::min(result.top, media.top)};
  return cut.width() > 0 && cut.height() > 0 ? cut : media;
}

int PDFDocument::rotation(std::size_t page) const {
  constexpr int turn = 360;
  long long degrees = 0;
  internals_->guarded(PDFError::Kind::unreadable,
                      [&] { pageAttribute(internals_->pages.at(page), "/Rotate").getValueAsInt(degrees); });
  degrees = (degrees % turn + turn) % turn;
  return degrees % 90 == 0 ? static_cast<int>(degrees) : 0;
}

void PDFDocument::write(int descriptor) const {
  internals_->guarded(PDFError::Kind::writeFailed, [&] {
    if (isLocked()) throw PDFError(PDFError::Kind::writeFailed, "locked");
    Internals::requireReadable(internals_->pages);
    internals_->mend();
    PDFSink sink(descriptor);
    QPDFWriter writer(*internals_->qpdf);
    writer.setOutputPipeline(&sink);
    writer.setDecodeLevel(qpdf_dl_none);
    writer.setCompressStreams(false);
    if (!internals_->qpdf->isEncrypted()) writer.setDeterministicID(true);
    writer.write();
    sink.flush();
  });
}

}  // namespace quirn::platform
