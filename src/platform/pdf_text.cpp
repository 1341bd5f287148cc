// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_text.h"

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "platform/loaded_library.h"

namespace quirn::platform {
namespace {

// Pango and Cairo, opened when the first text is set: linked, they and the libraries behind them would add 5 ms to
// every start of a worker, most of whose operations set no text.
struct TextLibrary {
  decltype(g_object_unref)* unreference = nullptr;
  decltype(g_free)* free = nullptr;
  decltype(g_utf8_make_valid)* makeValid = nullptr;
  decltype(pango_font_description_new)* newFont = nullptr;
  decltype(pango_font_description_free)* freeFont = nullptr;
  decltype(pango_font_description_set_family)* setFamily = nullptr;
  decltype(pango_font_description_set_absolute_size)* setSize = nullptr;
  decltype(pango_font_description_set_weight)* setWeight = nullptr;
  decltype(pango_cairo_create_layout)* newLayout = nullptr;
  decltype(pango_layout_get_context)* contextOf = nullptr;
  decltype(pango_cairo_context_set_resolution)* setResolution = nullptr;
  decltype(pango_context_set_round_glyph_positions)* setGlyphRounding = nullptr;
  decltype(pango_layout_set_font_description)* setFont = nullptr;
  decltype(pango_layout_set_text)* setText = nullptr;
  decltype(pango_layout_set_single_paragraph_mode)* setSingleParagraph = nullptr;
  decltype(pango_layout_set_width)* setWidth = nullptr;
  decltype(pango_layout_set_wrap)* setWrap = nullptr;
  decltype(pango_layout_set_alignment)* setAlignment = nullptr;
  decltype(pango_layout_set_auto_dir)* setAutoDirection = nullptr;
  decltype(pango_layout_get_size)* sizeOf = nullptr;
  decltype(pango_cairo_show_layout)* showLayout = nullptr;
  decltype(cairo_pdf_surface_create_for_stream)* newSurface = nullptr;
  decltype(cairo_surface_destroy)* freeSurface = nullptr;
  decltype(cairo_pdf_surface_set_size)* setSurfaceSize = nullptr;
  decltype(cairo_surface_finish)* finishSurface = nullptr;
  decltype(cairo_surface_status)* surfaceStatus = nullptr;
  decltype(cairo_create)* newDrawing = nullptr;
  decltype(cairo_destroy)* freeDrawing = nullptr;
  decltype(cairo_status)* statusOf = nullptr;
  decltype(cairo_status_to_string)* statusText = nullptr;
  decltype(cairo_move_to)* moveTo = nullptr;
  decltype(cairo_set_source_rgba)* setColor = nullptr;
  decltype(cairo_show_page)* showPage = nullptr;

  // pangocairo brings the others along, and their functions are found through it.
  TextLibrary() {
    const LoadedLibrary library("libpangocairo-1.0.so.0");
    library.find("g_object_unref", unreference);
    library.find("g_free", free);
    library.find("g_utf8_make_valid", makeValid);
    library.find("pango_font_description_new", newFont);
    library.find("pango_font_description_free", freeFont);
    library.find("pango_font_description_set_family", setFamily);
    library.find("pango_font_description_set_absolute_size", setSize);
    library.find("pango_font_description_set_weight", setWeight);
    library.find("pango_cairo_create_layout", newLayout);
    library.find("pango_layout_get_context", contextOf);
    library.find("pango_cairo_context_set_resolution", setResolution);
    library.find("pango_context_set_round_glyph_positions", setGlyphRounding);
    library.find("pango_layout_set_font_description", setFont);
    library.find("pango_layout_set_text", setText);
    library.find("pango_layout_set_single_paragraph_mode", setSingleParagraph);
    library.find("pango_layout_set_width", setWidth);
    library.find("pango_layout_set_wrap", setWrap);
    library.find("pango_layout_set_alignment", setAlignment);
    library.find("pango_layout_set_auto_dir", setAutoDirection);
    library.find("pango_layout_get_size", sizeOf);
    library.find("pango_cairo_show_layout", showLayout);
    library.find("cairo_pdf_surface_create_for_stream", newSurface);
    library.find("cairo_surface_destroy", freeSurface);
    library.find("cairo_pdf_surface_set_size", setSurfaceSize);
    library.find("cairo_surface_finish", finishSurface);
    library.find("cairo_surface_status", surfaceStatus);
    library.find("cairo_create", newDrawing);
    library.find("cairo_destroy", freeDrawing);
    library.find("cairo_status", statusOf);
    library.find("cairo_status_to_string", statusText);
    library.find("cairo_move_to", moveTo);
    library.find("cairo_set_source_rgba", setColor);
    library.find("cairo_show_page", showPage);
  }
};

const TextLibrary& library() {
  static const TextLibrary loaded;
  return loaded;
}

struct Freeing {
  void operator()(cairo_surface_t* surface) const { library().freeSurface(surface); }
  void operator()(cairo_t* drawing) const { library().freeDrawing(drawing); }
  void operator()(PangoLayout* layout) const { library().unreference(layout); }
  void operator()(PangoFontDescription* font) const { library().freeFont(font); }
  void operator()(char* text) const { library().free(text); }
};
using Surface = std::unique_ptr<cairo_surface_t, Freeing>;
using Drawing = std::unique_ptr<cairo_t, Freeing>;
using Layout = std::unique_ptr<PangoLayout, Freeing>;
using FontDescription = std::unique_ptr<PangoFontDescription, Freeing>;
using Text = std::unique_ptr<char, Freeing>;

void check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(library().statusText(status));
}

cairo_status_t append(void* text, const unsigned char* bytes, unsigned int count) {
  static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
  return CAIRO_STATUS_SUCCESS;
}

FontDescription fontOf(const PDFText& text) {
  FontDescription font(library().newFont());
  library().setFamily(font.get(), text.family.c_str());
  library().setSize(font.get(), text.size * PANGO_SCALE);
  library().setWeight(font.get(), text.weight == PDFText::Weight::bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  return font;
}

PangoAlignment alignmentOf(PDFText::Alignment alignment) {
  switch (alignment) {
    case PDFText::Alignment::center: return PANGO_ALIGN_CENTER;
    case PDFText::Alignment::right: return PANGO_ALIGN_RIGHT;
    case PDFText::Alignment::left: return PANGO_ALIGN_LEFT;
  }
  throw std::logic_error("alignment");
}

Layout layoutOf(cairo_t* drawing, const PDFText& text) {
  Layout layout(library().newLayout(drawing));
  PangoContext* const context = library().contextOf(layout.get());
  library().setResolution(context, 72);
  library().setGlyphRounding(context, FALSE);
  library().setFont(layout.get(), fontOf(text).get());
  const std::string_view shown = std::string_view(text.text).substr(0, PDFTypesetter::mostBytes);
  const Text valid(library().makeValid(shown.data(), static_cast<gssize>(shown.size())));
  library().setText(layout.get(), valid.get(), -1);
  library().setSingleParagraph(layout.get(), text.wrapWidth ? FALSE : TRUE);
  if (text.wrapWidth) {
    library().setWidth(layout.get(), static_cast<int>(*text.wrapWidth * PANGO_SCALE));
    library().setWrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    library().setAlignment(layout.get(), alignmentOf(text.alignment));
    // Alignment is a choice of the person's here, whichever way the text runs.
    library().setAutoDirection(layout.get(), FALSE);
  }
  return layout;
}

PDFTextExtent extentOf(PangoLayout* layout, const PDFText& text) {
  int width = 0;
  int height = 0;
  library().sizeOf(layout, &width, &height);
  return {text.wrapWidth.value_or(static_cast<double>(width) / PANGO_SCALE), static_cast<double>(height) / PANGO_SCALE};
}

}  // namespace

struct PDFTypesetter::State {
  std::string pdf;
  Surface surface{library().newSurface(&append, &pdf, 1, 1)};
  Drawing drawing{library().newDrawing(surface.get())};
};

PDFTypesetter::PDFTypesetter() : state_(std::make_unique<State>()) {
  check(library().statusOf(state_->drawing.get()));
}

PDFTypesetter::~PDFTypesetter() = default;

PDFTextExtent PDFTypesetter::measure(const PDFText& text) const {
  return extentOf(layoutOf(state_->drawing.get(), text).get(), text);
}

PDFTextExtent PDFTypesetter::add(const PDFText& text) {
  cairo_t* const drawing = state_->drawing.get();
  const Layout layout = layoutOf(drawing, text);
  const PDFTextExtent extent = extentOf(layout.get(), text);
  const double room = margin * text.size;
  library().setSurfaceSize(state_->surface.get(), extent.width + 2 * room, extent.height + 2 * room);
  library().moveTo(drawing, room, room);
  library().setColor(drawing, text.color.red, text.color.green, text.color.blue, text.opacity);
  library().showLayout(drawing, layout.get());
  library().showPage(drawing);
  check(library().statusOf(drawing));
  return extent;
}

std::string PDFTypesetter::finish() {
  library().finishSurface(state_->surface.get());
  check(library().surfaceStatus(state_->surface.get()));
  return std::move(state_->pdf);
}

}  // namespace quirn::platform
