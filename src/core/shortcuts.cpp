// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/shortcuts.h"

namespace quirn {
namespace {

constexpr std::string_view merge[] = {"Merge PDFs with {app}", "Merge PDFs in {app}"};
constexpr std::string_view split[] = {"Split a PDF with {app}", "Split PDF in {app}"};
constexpr std::string_view compress[] = {"Compress PDF in {app}"};
constexpr std::string_view convert[] = {"Convert image in {app}"};
constexpr std::string_view transcribe[] = {"Transcribe audio in {app}"};
constexpr std::string_view open[] = {"Open in {app}"};

constexpr Shortcut shortcuts[] = {
    {"Merge PDFs", "pdf.merge", "PDFs", merge, "rectangle.stack"},
    {"Split PDF", "pdf.split", "PDF", split, "rectangle.split.2x1"},
    {"Compress PDF", "pdf.compress", "PDF", compress, "rectangle.compress.vertical"},
    {"Convert Image", "image.convert", "Images", convert, "arrow.2.squarepath"},
    {"Transcribe", "audio.transcribe", "Audio or Video", transcribe, "waveform.badge.mic"},
    {"Open in Quirn", std::nullopt, "Files", open, "tray.and.arrow.down"},
};

}  // namespace

std::span<const Shortcut> QuirnShortcuts::all() {
  return shortcuts;
}

}  // namespace quirn
