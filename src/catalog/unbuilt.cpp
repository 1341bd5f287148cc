// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalog/unbuilt.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>
#include <vector>

namespace quirn {
namespace {

using enum OperationCategory;

struct Identity {
  std::string_view operationID;
  std::string_view displayName;
  std::string_view iconName;
  OperationCategory category;
  std::string_view aliases;  // separated by "; "
};

// clang-format off: a row is a line, which leaves as a whole.
constexpr Identity identities[] = {
    {"image.heic-to-jpg", "HEIC → JPG", "photo", image, "to jpg; jpeg; convert heic; heic to jpeg"},
    {"image.resize", "Resize Image", "arrow.up.left.and.arrow.down.right", image, "resize; scale image; shrink image; downscale"},
    {"image.convert", "Convert Image", "arrow.2.squarepath", image, "convert image; to png; to jpeg; to heic; to tiff; change format; webp; avif; webp to png; avif to jpg; webp to jpg"},
    {"image.remove-background", "Remove Background", "person.crop.rectangle", image, "remove background; remove bg; cut out; transparent; subject"},
    {"image.ocr", "Extract Text (OCR)", "text.viewfinder", image, "ocr; extract text; recognize text; image to text; read text"},
    {"image.to-pdf", "Images → PDF", "photo.on.rectangle", image, "images to pdf; combine images; jpg to pdf; png to pdf; photos to pdf"},
    {"pdf.to-images", "PDF → Images", "photo.stack", pdf, "pdf to images; pdf to png; pdf to jpg; export pages; rasterize pdf"},
    {"pdf.sign", "Sign PDF", "signature", pdf, "sign pdf; signature; add signature"},
    {"pdf.fill-forms", "Fill PDF Form", "list.bullet.rectangle", pdf, "fill form; acroform; fill pdf; form fields"},
    {"pdf.annotate", "Annotate PDF", "pencil.tip", pdf, "annotate; markup; draw on pdf; highlight; pen"},
    {"pdf.grayscale", "PDF to Grayscale", "circle.lefthalf.filled", pdf, "grayscale; black and white; bw pdf; desaturate; greyscale"},
    {"pdf.redact", "Redact PDF", "rectangle.fill", pdf, "redact; black out; censor; hide text"},
    {"pdf.compare", "Compare PDFs", "doc.on.doc", pdf, "compare pdf; diff pdf; pdf difference; changes"},
    {"pdf.deskew", "Deskew Scan", "perspective", pdf, "deskew; straighten; perspective; fix scan; auto-crop scan"},
    {"pdf.searchable", "Make Searchable (OCR)", "doc.text.magnifyingglass", pdf, "ocr pdf; searchable pdf; text layer; recognize pdf"},
    {"pdf.extract-images", "Extract Images", "photo.on.rectangle.angled", pdf, "extract images; get images from pdf; pdf images; rip images"},
    {"html.to-pdf", "HTML → PDF", "globe", pdf, "html to pdf; webpage to pdf; web to pdf; htm to pdf"},
    {"text.to-pdf", "Text → PDF", "doc.text", pdf, "text to pdf; txt to pdf; rtf to pdf; markdown to pdf; md to pdf"},
    {"image.crop", "Crop Image", "crop", image, "crop; aspect ratio; square crop; smart crop"},
    {"image.rotate-flip", "Rotate / Flip", "rotate.right", image, "rotate; flip; turn; mirror; rotate image"},
    {"image.raw-convert", "RAW → JPG / TIFF", "camera.aperture", image, "raw; develop raw; cr2; nef; arw; dng; raw to jpg"},
    {"image.color-adjust", "Adjust Colors", "slider.horizontal.3", image, "adjust; color; brightness; contrast; saturation; exposure; white balance"},
    {"image.auto-enhance", "Auto-Enhance", "wand.and.stars", image, "auto enhance; enhance; auto adjust; improve; magic"},
    {"image.denoise-sharpen", "Denoise / Sharpen", "sparkles", image, "denoise; sharpen; noise reduction; unsharp"},
    {"image.hdr-to-sdr", "HDR → SDR", "sun.max", image, "hdr to sdr; tone map; flatten hdr; sdr"},
    {"image.strip-metadata", "Strip Metadata", "eye.slash", image, "strip metadata; remove exif; remove gps; remove location; clear metadata; privacy; scrub"},
    {"image.metadata", "Edit Image Metadata", "info.circle", image, "image metadata; exif edit; iptc; caption; artist; copyright; keywords"},
    {"file.batch-rename", "Batch Rename", "pencil.and.list.clipboard", utility, "batch rename; rename; sequential; numbering; rename files"},
    {"image.favicon", "Favicon Set", "globe", image, "favicon; favicon.ico; site icon; web icon; ico"},
    {"image.appicon", "AppIcon Set", "app.badge", image, "appicon; app icon; appiconset; xcode icon; ios icon; macos icon"},
    {"image.qr-generate", "QR Code Generator", "qrcode", image, "qr; qr code; generate qr; make qr code; barcode"},
    {"image.qr-read", "Read QR Code", "qrcode.viewfinder", image, "read qr; scan qr; decode qr; qr to text; barcode read"},
    {"image.palette", "Color Palette", "swatchpalette", image, "palette; colors; dominant colors; color palette; swatches; extract colors"},
    {"image.watermark", "Watermark Image", "drop", image, "watermark; stamp; logo; copyright; overlay text"},
    {"image.border", "Border / Padding", "square.dashed", image, "border; padding; pad; pad to square; frame; matte"},
    {"image.face-blur", "Blur Faces", "face.dashed", image, "face blur; blur faces; anonymize; hide faces; redact faces; privacy"},
    {"image.blur-regions", "Blur / Pixelate Regions", "squareshape.split.3x3", image, "blur regions; pixelate; censor; hide; mosaic; obscure"},
    {"image.live-text", "Live Text", "text.viewfinder", image, "live text; extract text; image to text; copy text; read text"},
    {"image.document-ocr", "Document OCR (Structured)", "doc.text.viewfinder", image, "document ocr; structured ocr; tables; scan to markdown; ocr layout; recognize document"},
    {"image.compress", "Compress Image", "arrow.down.right.and.arrow.up.left", image, "compress; shrink; optimize; reduce size; smaller image; tinypng"},
    {"audio.transcribe", "Transcribe", "waveform.badge.mic", audio, "transcribe; speech to text; audio to text; subtitles; captions; srt; vtt; dictation"},
    {"audio.text-to-speech", "Text to Speech", "speaker.wave.2", audio, "text to speech; tts; read aloud; voice; narrate; speak"},
    {"video.convert", "Convert Video", "film", video, "convert video; to mp4; to mov; h264; hevc; prores; transcode; video format"},
    {"video.compress", "Compress Video", "rectangle.compress.vertical", video, "compress video; shrink video; reduce video; smaller video; bitrate"},
    {"video.resolution", "Resize Video", "arrow.up.left.and.arrow.down.right", video, "resize video; resolution; scale video; 1080p; 720p; 4k; downscale"},
    {"video.crop", "Crop Video", "crop", video, "crop video; aspect ratio; vertical video; square video; reframe"},
    {"video.rotate-flip", "Rotate / Flip Video", "rotate.right", video, "rotate video; flip video; mirror video; turn video"},
    {"video.color", "Adjust Video Colors", "slider.horizontal.3", video, "video color; video brightness; video contrast; saturation; grade; video filter"},
    {"video.fade", "Fade Video", "circle.lefthalf.filled", video, "video fade; fade in; fade out; fade to black"},
    {"video.watermark", "Watermark Video", "drop", video, "video watermark; logo on video; brand video; overlay text video"},
    {"video.chroma-key", "Replace Background", "person.crop.rectangle", video, "chroma key; green screen; remove background video; person segmentation; background replace"},
    {"video.trim", "Trim Video", "scissors", video, "trim video; cut video; clip video; shorten video"},
    {"video.audio", "Mute / Replace Audio", "speaker.slash", video, "mute video; remove audio; replace audio; add music; video soundtrack"},
    {"video.extract-audio", "Extract Audio", "waveform", video, "extract audio; video to audio; rip audio; get audio from video; to mp3"},
    {"video.frames", "Video → Frames", "photo.stack", video, "video to frames; extract frames; frame sequence; video to images; screenshots from video"},
    {"video.contact-sheet", "Contact Sheet", "rectangle.grid.3x2", video, "contact sheet; video thumbnails; storyboard; preview grid; thumbnail grid"},
    {"video.gif", "Video → GIF", "photo.on.rectangle", video, "video to gif; make gif; gif; apng; animated"},
    {"video.extract-subtitles", "Extract Subtitles", "captions.bubble", video, "extract subtitles; rip subtitles; embedded subtitles; get subtitles; tx3g"},
    {"video.speed", "Speed Up / Slow Down", "gauge", video, "video speed; slow motion; timelapse; speed up video; slow down video; fast forward"},
    {"video.concat", "Join Videos", "film.stack", video, "join videos; merge videos; concatenate video; combine clips; stitch video"},
    {"video.framerate", "Change Frame Rate", "speedometer", video, "framerate; fps; frame rate; 60fps; 30fps; smooth video"},
    {"video.loop", "Loop Video", "repeat", video, "loop video; repeat video; loop"},
    {"video.reverse", "Reverse / Boomerang", "backward", video, "reverse video; boomerang; rewind video; backwards video"},
    {"video.subtitles", "Auto-Subtitle (Burn In)", "captions.bubble.fill", video, "auto subtitle; burn subtitles; caption video; subtitle video; hardcode subtitles; transcribe video"},
    {"video.pip", "Picture in Picture", "pip", video, "picture in picture; pip; overlay video; video over video; reaction video"},
    {"subtitle.convert", "Convert Subtitles", "captions.bubble", subtitles, "convert subtitles; srt to vtt; vtt to srt; ass to srt; subtitle format"},
    {"subtitle.shift", "Shift Subtitles", "clock.arrow.2.circlepath", subtitles, "shift subtitles; resync subtitles; subtitle offset; subtitle delay; sync"},
    {"subtitle.encoding", "Fix Subtitle Encoding", "textformat.abc", subtitles, "fix subtitle encoding; mojibake; subtitle utf8; cyrillic subtitles; garbled subtitles"},
    {"subtitle.merge", "Merge Subtitles", "rectangle.stack", subtitles, "merge subtitles; combine subtitles; join subtitles"},
    {"audio.trim", "Trim Audio", "scissors", audio, "trim audio; cut audio; clip; crop audio; shorten"},
    {"audio.merge", "Merge Audio", "link", audio, "merge audio; join audio; combine audio; concatenate; crossfade"},
    {"audio.convert", "Convert Audio", "waveform", audio, "convert audio; to m4a; to wav; to flac; mp3 to; audio format; sample rate; bitrate"},
    {"audio.normalize", "Normalize Volume", "speaker.wave.3", audio, "normalize; loudness; volume; boost; peak normalize; louder"},
    {"audio.speed", "Speed / Pitch", "gauge", audio, "speed; tempo; pitch; slow down; speed up; pitch shift; nightcore"},
    {"audio.channels", "Channels", "hifispeaker.2", audio, "mono; stereo; swap channels; downmix; channel"},
    {"audio.fade", "Fade In / Out", "waveform.path", audio, "fade; fade in; fade out; fade audio"},
    {"audio.reverse", "Reverse Audio", "backward", audio, "reverse audio; backwards; rewind"},
    {"audio.karaoke", "Vocal Remove (Karaoke)", "music.mic", audio, "karaoke; remove vocals; vocal remover; instrumental; center channel"},
    {"audio.voice-effects", "Voice Effects", "waveform.path.ecg", audio, "voice effects; robot voice; chipmunk; deep voice; reverb; voice changer"},
    {"audio.ringtone", "Make Ringtone", "bell", audio, "ringtone; m4r; iphone ringtone; ringtone export"},
    {"audio.trim-silence", "Trim / Split Silence", "waveform.slash", audio, "trim silence; remove silence; split by silence; split audio; silence"},
    {"text.csv-convert", "CSV ↔ JSON ↔ TSV", "tablecells", text, "csv to json; json to csv; tsv to csv; csv to tsv; tabular convert"},
    {"text.encoding", "Text Encoding Converter", "textformat.abc", text, "text encoding; convert encoding; to utf-8; latin-1; windows-1252"},
    {"text.line-endings", "Line Endings (LF/CRLF/CR)", "return", text, "line endings; lf to crlf; crlf to lf; newlines; dos to unix; unix to dos"},
    {"text.markdown", "Markdown → HTML / PDF", "doc.richtext", text, "markdown to html; md to html; markdown to pdf; md to pdf; render markdown"},
    {"text.diff", "Text Diff", "plus.forwardslash.minus", text, "diff; compare text; text compare; changes; difference"},
    {"text.json-diff", "JSON Diff", "curlybraces", text, "json diff; compare json; json compare; json changes"},
    {"contacts.vcard-csv", "vCard ↔ CSV", "person.crop.rectangle.stack", contacts, "vcard to csv; csv to vcard; vcf to csv; csv to vcf; contacts; address book"},
    {"contacts.ics-csv", "ICS ↔ CSV", "calendar", contacts, "ics to csv; csv to ics; ical to csv; calendar to csv; events; calendar"},
    {"contacts.eml-extract", "Email (.eml) Extractor", "envelope.open", contacts, "eml; email extractor; extract attachments; open eml; message"},
    {"contacts.dedupe", "Dedupe Contacts", "person.2", contacts, "dedupe contacts; remove duplicate contacts; merge contacts; vcard dedupe"},
    {"geo.convert", "GPX ↔ KML ↔ GeoJSON", "map", geo, "gpx to geojson; kml to gpx; geojson to kml; convert track; gpx; kml; geojson; route convert"},
    {"geo.simplify", "Simplify GPX Track", "point.topleft.down.curvedto.point.bottomright.up", geo, "simplify gpx; reduce points; decimate track; thin gpx; douglas peucker"},
    {"geo.geotag", "Geotag Photos from GPX", "mappin.and.ellipse", geo, "geotag; geotag photos; gps from gpx; tag location; add gps; photo location"},
    {"vector.svg-render", "SVG → PNG / PDF / JPG", "square.on.circle", vector, "svg to png; svg to pdf; svg to jpg; rasterize svg; render svg; svg convert"},
    {"vector.svg-minify", "Minify SVG", "arrow.down.right.and.arrow.up.left", vector, "minify svg; clean svg; compress svg; optimize svg; shrink svg"},
    {"vector.eps", "EPS → PDF / PNG", "scribble.variable", vector, "eps to pdf; eps to png; convert eps; epsf; epsi"},
    {"utility.duplicates", "Find Duplicate Files", "doc.on.doc", utility, "duplicates; find duplicates; dedupe; duplicate finder; identical files"},
    {"utility.sort-group", "Sort & Group Files", "folder.badge.gearshape", utility, "sort; group; organize; sort files; group files; tidy"},
    {"utility.audio-tags", "Read Audio Tags", "tag", utility, "tags; id3; audio tags; metadata; read tags; music tags"},
    {"archive.aar-create", "Create Apple Archive", "archivebox.fill", archive, "aar; apple archive; lzfse; create aar"},
    {"archive.aar-extract", "Extract Apple Archive", "lock.open", archive, "extract aar; extract aea; decrypt archive; open apple archive"},
    {"office.document-convert", "Convert Document", "doc.badge.gearshape", office, "rtf to docx; docx to pdf; docx to txt; rtf to pdf; convert document; word to pdf"},
    {"office.markdown-docx", "Markdown → DOCX", "doc.richtext", office, "markdown to docx; md to word; markdown to word; text to docx"},
    {"office.csv-xlsx", "CSV → XLSX", "tablecells", office, "csv to xlsx; csv to excel; make spreadsheet; tsv to xlsx"},
    {"office.xlsx-csv", "XLSX → CSV", "tablecells.badge.ellipsis", office, "xlsx to csv; excel to csv; spreadsheet to csv; xlsx"},
    {"office.docx-text", "DOCX → Markdown / Text", "doc.plaintext", office, "docx to text; docx to markdown; word to markdown; extract docx text"},
    {"office.pptx-text", "PPTX → Text + Media", "rectangle.on.rectangle.angled", office, "pptx to text; powerpoint to text; extract pptx; pptx"},
    {"ai.smart-rename", "Smart Rename", "character.cursor.ibeam", ai, "ai rename; smart rename; rename by content; suggest filename; auto name"},
    {"ai.summarize", "Summarize", "text.alignleft", ai, "summarize; summarise; tldr; summary; ai summary; shorten"},
    {"ai.auto-tag", "Auto-Tag", "tag", ai, "auto tag; classify; label; ai tags; categorize"},
    {"ai.smart-redact", "Smart Redact", "eye.slash", ai, "redact; remove pii; hide personal info; anonymize; censor; black out"},
    {"ai.translate", "Translate", "globe", ai, "translate; translation; translate document; translate text; language"},
    {"ai.document-qa", "Ask a Document", "questionmark.bubble", ai, "ask document; chat with file; document q and a; ask pdf; question answer; ask a file"},
};
// clang-format on

std::vector<std::string_view> separated(std::string_view list) {
  constexpr std::string_view separator = "; ";
  std::vector<std::string_view> items;
  while (!list.empty()) {
    items.push_back(list.substr(0, list.find(separator)));
    list.remove_prefix(std::min(list.size(), items.back().size() + separator.size()));
  }
  return items;
}

const Identity& identityOf(std::string_view operationID) {
  static const auto byID = [] {
    std::map<std::string_view, const Identity*> map;
    for (const Identity& identity : identities) map.emplace(identity.operationID, &identity);
    return map;
  }();
  const auto found = byID.find(operationID);
  if (found == byID.end()) throw std::logic_error(fmt::format("{} is in no list of operations", operationID));
  return *found->second;
}

}  // namespace

OperationType unbuiltOperation(std::string_view operationID) {
  const Identity& identity = identityOf(operationID);
  return OperationType::unbuilt({.operationID = identity.operationID,
                                 .displayName = identity.displayName,
                                 .iconName = identity.iconName,
                                 .category = identity.category,
                                 .aliases = separated(identity.aliases),
                                 .about = {}});
}

std::size_t unbuiltOperationCount() {
  return std::size(identities);
}

}  // namespace quirn
