// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalog/catalog.h"

#include <stdexcept>

#include "archive/gzip_operation.h"
#include "archive/tar_create_operation.h"
#include "archive/tar_extract_operation.h"
#include "archive/zip_create_operation.h"
#include "archive/zip_extract_operation.h"
#include "archive/zip_inspect_operation.h"
#include "catalog/unbuilt.h"
#include "documents/hash_files_operation.h"
#include "documents/verify_checksums_operation.h"
#include "pdf/pdf_bookmarks_operation.h"
#include "pdf/pdf_compress_operation.h"
#include "pdf/pdf_crop_operation.h"
#include "pdf/pdf_delete_annotations_operation.h"
#include "pdf/pdf_encrypt_operation.h"
#include "pdf/pdf_flatten_operation.h"
#include "pdf/pdf_merge_operation.h"
#include "pdf/pdf_metadata_operation.h"
#include "pdf/pdf_nup_operation.h"
#include "pdf/pdf_page_numbers_operation.h"
#include "pdf/pdf_repair_operation.h"
#include "pdf/pdf_resize_operation.h"
#include "pdf/pdf_split_operation.h"
#include "pdf/pdf_unlock_operation.h"
#include "pdf/pdf_watermark_operation.h"
#include "probes/dmg_probe_operation.h"
#include "probes/identity_copy_operation.h"
#include "workbench/all_text_tools.h"
#include "workbench/text_tool_operation.h"

namespace quirn {
namespace {

// A line of the catalog: how to make the type, and of which identifier where its class doesn't say it.
struct Row {
  OperationType (*make)(std::string_view operationID);
  std::string_view operationID = {};
};

template <class Operation>
constexpr Row built() {
  return {[](std::string_view) { return OperationType::of<Operation>(); }};
}

// Its code is in a module that workers load.
template <class Operation>
constexpr Row inModule() {
  return {[](std::string_view) { return OperationType::describedBy<Operation>(); }};
}

constexpr Row unbuilt(std::string_view operationID) {
  return {&unbuiltOperation, operationID};
}

OperationType namedTextTool(std::string_view id) {
  const TextTool* const tool = textToolByID(id);
  if (tool == nullptr) throw std::logic_error(std::string(id));
  return textToolOperation(*tool);
}

constexpr Row textTool(std::string_view id) {
  return {&namedTextTool, id};
}

// This order is the order of the catalog. It is stated nowhere else.
constexpr Row rows[] = {
    inModule<PDFMergeOperation>(),
    inModule<PDFSplitOperation>(),
    unbuilt("image.heic-to-jpg"),
    unbuilt("image.resize"),
    unbuilt("image.convert"),
    unbuilt("image.remove-background"),
    unbuilt("image.ocr"),
    unbuilt("image.to-pdf"),
    unbuilt("pdf.to-images"),
    inModule<PDFMetadataOperation>(),
    inModule<PDFBookmarksOperation>(),
    inModule<PDFEncryptOperation>(),
    inModule<PDFUnlockOperation>(),
    inModule<PDFWatermarkOperation>(),
    inModule<PDFPageNumbersOperation>(),
    inModule<PDFFlattenOperation>(),
    inModule<PDFDeleteAnnotationsOperation>(),
    unbuilt("pdf.sign"),
    unbuilt("pdf.fill-forms"),
    unbuilt("pdf.annotate"),
    inModule<PDFCropOperation>(),
    inModule<PDFResizeOperation>(),
    inModule<PDFNUpOperation>(),
    unbuilt("pdf.grayscale"),
    unbuilt("pdf.redact"),
    inModule<PDFCompressOperation>(),
    unbuilt("pdf.compare"),
    inModule<PDFRepairOperation>(),
    unbuilt("pdf.deskew"),
    unbuilt("pdf.searchable"),
    unbuilt("pdf.extract-images"),
    unbuilt("html.to-pdf"),
    unbuilt("text.to-pdf"),
    unbuilt("image.crop"),
    unbuilt("image.rotate-flip"),
    unbuilt("image.raw-convert"),
    unbuilt("image.color-adjust"),
    unbuilt("image.auto-enhance"),
    unbuilt("image.denoise-sharpen"),
    unbuilt("image.hdr-to-sdr"),
    unbuilt("image.strip-metadata"),
    unbuilt("image.metadata"),
    unbuilt("file.batch-rename"),
    unbuilt("image.favicon"),
    unbuilt("image.appicon"),
    unbuilt("image.qr-generate"),
    unbuilt("image.qr-read"),
    unbuilt("image.palette"),
    unbuilt("image.watermark"),
    unbuilt("image.border"),
    unbuilt("image.face-blur"),
    unbuilt("image.blur-regions"),
    unbuilt("image.live-text"),
    unbuilt("image.document-ocr"),
    unbuilt("image.compress"),
    unbuilt("audio.transcribe"),
    unbuilt("audio.text-to-speech"),
    unbuilt("video.convert"),
    unbuilt("video.compress"),
    unbuilt("video.resolution"),
    unbuilt("video.crop"),
    unbuilt("video.rotate-flip"),
    unbuilt("video.color"),
    unbuilt("video.fade"),
    unbuilt("video.watermark"),
    unbuilt("video.chroma-key"),
    unbuilt("video.trim"),
    unbuilt("video.audio"),
    unbuilt("video.extract-audio"),
    unbuilt("video.frames"),
    unbuilt("video.contact-sheet"),
    unbuilt("video.gif"),
    unbuilt("video.extract-subtitles"),
    unbuilt("video.speed"),
    unbuilt("video.concat"),
    unbuilt("video.framerate"),
    unbuilt("video.loop"),
    unbuilt("video.reverse"),
    unbuilt("video.subtitles"),
    unbuilt("video.pip"),
    unbuilt("subtitle.convert"),
    unbuilt("subtitle.shift"),
    unbuilt("subtitle.encoding"),
    unbuilt("subtitle.merge"),
    unbuilt("audio.trim"),
    unbuilt("audio.merge"),
    unbuilt("audio.convert"),
    unbuilt("audio.normalize"),
    unbuilt("audio.speed"),
    unbuilt("audio.channels"),
    unbuilt("audio.fade"),
    unbuilt("audio.reverse"),
    unbuilt("audio.karaoke"),
    unbuilt("audio.voice-effects"),
    unbuilt("audio.ringtone"),
    unbuilt("audio.trim-silence"),
    textTool("dev.uuid"),
    textTool("dev.password"),
    textTool("dev.base64"),
    textTool("dev.case"),
    textTool("dev.json"),
    textTool("dev.slug"),
    textTool("dev.xml"),
    textTool("dev.xml-json"),
    textTool("dev.xpath"),
    textTool("dev.jsonpath"),
    textTool("dev.url-encode"),
    textTool("dev.html-escape"),
    textTool("dev.xml-escape"),
    textTool("dev.js-escape"),
    textTool("dev.sql-escape"),
    textTool("dev.csv-escape"),
    textTool("dev.backslash"),
    textTool("dev.unicode-escape"),
    textTool("dev.base-convert"),
    textTool("dev.hex-bytes"),
    textTool("dev.hash"),
    textTool("dev.hmac"),
    textTool("dev.punycode"),
    textTool("dev.quoted-printable"),
    textTool("dev.base32"),
    textTool("dev.nanoid"),
    textTool("dev.ulid"),
    textTool("dev.lorem"),
    textTool("dev.jwt"),
    textTool("dev.regex"),
    textTool("dev.querystring"),
    textTool("dev.url-parse"),
    textTool("dev.ipcalc"),
    textTool("dev.http-status"),
    textTool("dev.user-agent"),
    textTool("color.convert"),
    textTool("color.contrast"),
    textTool("color.gradient"),
    textTool("time.timestamp"),
    textTool("time.timezone"),
    textTool("time.datemath"),
    textTool("time.units"),
    textTool("time.cron"),
    unbuilt("text.csv-convert"),
    unbuilt("text.encoding"),
    unbuilt("text.line-endings"),
    unbuilt("text.markdown"),
    built<HashFilesOperation>(),
    built<ChecksumVerifyOperation>(),
    unbuilt("text.diff"),
    unbuilt("text.json-diff"),
    unbuilt("contacts.vcard-csv"),
    unbuilt("contacts.ics-csv"),
    unbuilt("contacts.eml-extract"),
    unbuilt("contacts.dedupe"),
    unbuilt("geo.convert"),
    unbuilt("geo.simplify"),
    unbuilt("geo.geotag"),
    unbuilt("vector.svg-render"),
    unbuilt("vector.svg-minify"),
    unbuilt("vector.eps"),
    unbuilt("utility.duplicates"),
    unbuilt("utility.sort-group"),
    unbuilt("utility.audio-tags"),
    built<ZipCreateOperation>(),
    built<ZipExtractOperation>(),
    built<ZipInspectOperation>(),
    built<TarCreateOperation>(),
    built<TarExtractOperation>(),
    built<GzipOperation>(),
    unbuilt("archive.aar-create"),
    built<EncryptArchiveOperation>(),
    unbuilt("archive.aar-extract"),
    unbuilt("office.document-convert"),
    unbuilt("office.markdown-docx"),
    unbuilt("office.csv-xlsx"),
    unbuilt("office.xlsx-csv"),
    unbuilt("office.docx-text"),
    unbuilt("office.pptx-text"),
    unbuilt("ai.smart-rename"),
    unbuilt("ai.summarize"),
    unbuilt("ai.auto-tag"),
    unbuilt("ai.smart-redact"),
    unbuilt("ai.translate"),
    unbuilt("ai.document-qa"),
    built<IdentityCopyOperation>(),
    built<DMGProbeOperation>(),
};

}  // namespace

void registerAllOperations(OperationRegistry& registry) {
  for (const Row& row : rows) registry.registerOperation(row.make(row.operationID));
}

}  // namespace quirn
