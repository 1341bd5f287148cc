// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/pdf_document.h"
#include "platform/pdf_encryption.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_object_copier.h"
#include "platform/pdf_object_writer.h"

namespace quirn::platform {
namespace {

// The encryption is of PDF 2.0; readers of 1.7 know it as an extension.
QPDFObjectHandle withExtension(QPDF& qpdf) {
  QPDFObjectHandle catalog = qpdf.getRoot().shallowCopy();
  if (!versionEntry(qpdf.getPDFVersion()).empty()) catalog.replaceKey("/Version", "/2.0"_qpdf);
  catalog.replaceKey("/Extensions", "<< /ADBE << /BaseVersion /1.7 /ExtensionLevel 8 >> >>"_qpdf);
  return catalog;
}

}  // namespace

void PDFDocument::writeProtected(int descriptor, const std::string& password) const {
  internals_->guarded(PDFError::Kind::writeFailed, [&] {
    if (isLocked()) throw PDFError(PDFError::Kind::writeFailed, "locked");
    QPDF& qpdf = *internals_->qpdf;
    internals_->mend();
    const PDFEncryption encryption = newPDFEncryption(password);
    PDFObjectWriter writer(descriptor, &encryption);
    PDFObjectCopier copier(*internals_, PDFObjectCopier::Pages::all, writer, &encryption);
    const int catalog = writer.reserve();
    copier.assign(qpdf.getRoot().getObjGen(), catalog);
    writer.write(catalog, copier.text(withExtension(qpdf)));
    std::string trailer = fmt::format("/Root {} 0 R ", catalog);
    // A direct dictionary in the trailer is out of the cipher's reach.
    if (QPDFObjectHandle info = qpdf.getTrailer().getKey("/Info"); info.isIndirect()) {
      trailer += copier.entry("/Info", info);
    }
    copier.drain();
    writer.finish(trailer + "/Encrypt " + encryption.dictionary, qpdf.getTrailer().getKey("/ID").unparse());
  });
}

}  // namespace quirn::platform
