// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Which drawing stands for which symbol. A name that is missing takes that of its longest beginning
// which is there, so only what differs from that has a line.

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "window/icon.h"

namespace quirn::window {
namespace {

using Row = std::pair<std::string_view, std::string_view>;  // symbol, drawing

constexpr std::array rows = std::to_array<Row>({
    {"app", "app"},
    {"archivebox", "archive"},
    {"arrow.2.squarepath", "convert"},
    {"arrow.clockwise", "refresh"},
    {"arrow.down.right.and.arrow.up.left", "shrink"},
    {"arrow.left.arrow.right", "arrows-h"},
    {"arrow.up.arrow.down.square", "arrows-v"},
    {"arrow.up.bin", "archive"},
    {"arrow.up.left.and.arrow.down.right", "expand"},
    {"backward", "rewind"},
    {"bandage", "wrench"},
    {"bell", "bell"},
    {"bookmark", "bookmark"},
    {"calendar", "calendar"},
    {"calendar.badge.plus", "calendar-plus"},
    {"camera.aperture", "aperture"},
    {"captions.bubble", "captions"},
    {"character.cursor.ibeam", "cursor-text"},
    {"checkmark.shield", "shield-check"},
    {"chevron.left.forwardslash.chevron.right", "code"},
    {"circle.lefthalf.filled", "contrast"},
    {"clock", "clock"},
    {"clock.arrow.2.circlepath", "clock-turn"},
    {"crop", "crop"},
    {"curlybraces", "braces"},
    {"doc", "doc"},
    {"doc.badge.gearshape", "doc-gear"},
    {"doc.on.clipboard", "paste"},
    {"doc.on.doc", "docs"},
    {"doc.plaintext", "doc-text"},
    {"doc.richtext", "doc-rich"},
    {"doc.text", "doc-text"},
    {"doc.text.magnifyingglass", "doc-search"},
    {"doc.text.viewfinder", "scan-doc"},
    {"doc.viewfinder", "scan-doc"},
    {"doc.zipper", "zip"},
    {"drop", "drop"},
    {"envelope", "envelope"},
    {"envelope.open", "envelope-open"},
    {"eraser", "eraser"},
    {"eye.slash", "eye-off"},
    {"face", "face"},
    {"film", "film"},
    {"film.stack", "film-stack"},
    {"folder", "folder"},
    {"folder.badge.gearshape", "folder-gear"},
    {"gauge", "gauge"},
    {"globe", "globe"},
    {"hifispeaker.2", "speakers"},
    {"info", "info"},
    {"key", "key"},
    {"link", "link"},
    {"list", "list"},
    {"lock", "lock"},
    {"lock.doc", "lock-doc"},
    {"lock.open", "lock-open"},
    {"lock.shield", "shield"},
    {"magnifyingglass", "search"},
    {"map", "map"},
    {"mappin", "pin"},
    {"music.mic", "microphone"},
    {"network", "network"},
    {"number", "number"},
    {"number.square", "number-square"},
    {"paintpalette", "palette"},
    {"pencil", "pencil"},
    {"pencil.and.list.clipboard", "rename"},
    {"percent", "percent"},
    {"person", "person"},
    {"person.2", "people"},
    {"person.crop", "person-frame"},
    {"perspective", "perspective"},
    {"photo", "photo"},
    {"photo.on.rectangle", "photos"},
    {"photo.stack", "photos"},
    {"pip", "pip"},
    {"plus.forwardslash.minus", "plus-minus"},
    {"point", "route"},
    {"qrcode", "qr"},
    {"qrcode.viewfinder", "qr-scan"},
    {"questionmark", "question"},
    {"rectangle.compress", "compress"},
    {"rectangle.fill", "redact"},
    {"rectangle.grid.2x2", "grid"},
    {"rectangle.grid.3x2", "grid-fine"},
    {"rectangle.on.rectangle", "slides"},
    {"rectangle.portrait", "doc"},
    {"rectangle.split", "split"},
    {"rectangle.stack", "stack"},
    {"repeat", "repeat"},
    {"return", "return"},
    {"rotate", "rotate"},
    {"ruler", "ruler"},
    {"scissors", "scissors"},
    {"scribble", "scribble"},
    {"seal", "drop"},
    {"shippingbox", "box"},
    {"shippingbox.and.arrow.backward", "box-out"},
    {"signature", "signature"},
    {"slider", "sliders"},
    {"sparkles", "sparkles"},
    {"speaker", "speaker"},
    {"speaker.slash", "speaker-off"},
    {"speedometer", "gauge"},
    {"square.and.arrow.down", "save"},
    {"square.dashed", "square-dashed"},
    {"square.on.circle", "shapes"},
    {"square.righthalf", "square-half"},
    {"square.stack", "layers"},
    {"squareshape.split", "mosaic"},
    {"stethoscope", "stethoscope"},
    {"sun", "sun"},
    {"swatchpalette", "swatches"},
    {"tablecells", "table"},
    {"tag", "tag"},
    {"text", "text-left"},
    {"text.append", "sample"},
    {"text.viewfinder", "scan-text"},
    {"textformat", "text"},
    {"textformat.123", "text-123"},
    {"textformat.abc.dottedunderline", "text-dotted"},
    {"timer", "timer"},
    {"tray.and.arrow.down", "tray"},
    {"wand", "wand"},
    {"waveform", "waveform"},
    {"waveform.badge.mic", "wave-mic"},
    {"waveform.path", "wave-path"},
    {"waveform.slash", "wave-off"},
    {"wrench", "wrench"},
    {"xmark", "close"},
});
static_assert(std::ranges::is_sorted(rows, {}, &Row::first));

}  // namespace

std::string_view drawingFor(std::string_view symbol) {
  while (!symbol.empty()) {
    const auto found = std::ranges::lower_bound(rows, symbol, {}, &Row::first);
    if (found != rows.end() && found->first == symbol) return found->second;
    symbol =
        symbol.substr(0, std::min(symbol.size(), symbol.rfind('.') == std::string_view::npos ? 0 : symbol.rfind('.')));
  }
  return "app";
}

}  // namespace quirn::window
