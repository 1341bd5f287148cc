// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_document.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_xmp.h"

namespace quirn::platform {
namespace {

std::string textOf(QPDFObjectHandle object) {
  return object.isString() ? object.getUTF8Value() : std::string();
}

std::vector<std::string> keywordsOf(QPDFObjectHandle object) {
  if (object.isString()) return {textOf(object)};
  std::vector<std::string> keywords;
  for (int i = 0; object.isArray() && i < object.getArrayNItems(); ++i) {
    keywords.push_back(textOf(object.getArrayItem(i)));
  }
  return keywords;
}

std::string joined(const std::vector<std::string>& keywords) {
  std::string text;
  for (const std::string& keyword : keywords) text += (text.empty() ? "" : ", ") + keyword;
  return text;
}

// A packet that can't be changed would contradict what is set now.
void setMetadata(QPDFObjectHandle catalog, const PDFAttributes& attributes) {
  QPDFObjectHandle stream = catalog.getKey("/Metadata");
  if (!stream.isStream()) return;
  const auto data = stream.getStreamData(qpdf_dl_generalized);
  const auto packet = xmpWith({reinterpret_cast<const char*>(data->getBuffer()), data->getSize()}, attributes);
  if (!packet) return catalog.removeKey("/Metadata");
  stream.replaceStreamData(*packet, QPDFObjectHandle::newNull(), QPDFObjectHandle::newNull());
}

}  // namespace

PDFAttributes PDFDocument::attributes() const {
  PDFAttributes attributes;
  if (isLocked()) return attributes;
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    QPDFObjectHandle info = internals_->qpdf->getTrailer().getKey("/Info");
    if (!info.isDictionary()) return;
    attributes = {.title = textOf(info.getKey("/Title")),
                  .author = textOf(info.getKey("/Author")),
                  .subject = textOf(info.getKey("/Subject")),
                  .keywords = keywordsOf(info.getKey("/Keywords"))};
  });
  return attributes;
}

void PDFDocument::setAttributes(const PDFAttributes& attributes) {
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    QPDFObjectHandle trailer = internals_->qpdf->getTrailer();
    if (!trailer.getKey("/Info").isDictionary()) {
      trailer.replaceKey("/Info", internals_->qpdf->makeIndirectObject(QPDFObjectHandle::newDictionary()));
    }
    QPDFObjectHandle info = trailer.getKey("/Info");
    info.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(attributes.title));
    info.replaceKey("/Author", QPDFObjectHandle::newUnicodeString(attributes.author));
    info.replaceKey("/Subject", QPDFObjectHandle::newUnicodeString(attributes.subject));
    info.replaceKey("/Keywords", QPDFObjectHandle::newUnicodeString(joined(attributes.keywords)));
    setMetadata(internals_->qpdf->getRoot(), attributes);
  });
}

}  // namespace quirn::platform
