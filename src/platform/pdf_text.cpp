// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_text.h"

#include <cairo-pdf.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace quirn::platform {
namespace {

template <auto Free>
struct Freeing {
  template <class Handle>
  void operator()(Handle* handle) const {
    Free(handle);
  }
};
using Surface = std::unique_ptr<cairo_surface_t, Freeing<&cairo_surface_destroy>>;
using Drawing = std::unique_ptr<cairo_t, Freeing<&cairo_destroy>>;
using Layout = std::unique_ptr<PangoLayout, Freeing<&g_object_unref>>;
using FontDescription = std::unique_ptr<PangoFontDescription, Freeing<&pango_font_description_free>>;
using Text = std::unique_ptr<char, Freeing<&g_free>>;

void check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

cairo_status_t append(void* text, const unsigned char* bytes, unsigned int count) {
  static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
  return CAIRO_STATUS_SUCCESS;
}

FontDescription fontOf(const PDFText& text) {
  FontDescription font(pango_font_description_new());
  pango_font_description_set_family(font.get(), text.family.c_str());
  pango_font_description_set_absolute_size(font.get(), text.size * PANGO_SCALE);
  pango_font_description_set_weight(font.get(),
                                    text.weight == PDFText::Weight::bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
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
  Layout layout(pango_cairo_create_layout(drawing));
  PangoContext* const context = pango_layout_get_context(layout.get());
  pango_cairo_context_set_resolution(context, 72);
  pango_context_set_round_glyph_positions(context, FALSE);
  pango_layout_set_font_description(layout.get(), fontOf(text).get());
  const std::string_view shown = std::string_view(text.text).substr(0, PDFTypesetter::mostBytes);
  const Text valid(g_utf8_make_valid(shown.data(), static_cast<gssize>(shown.size())));
  pango_layout_set_text(layout.get(), valid.get(), -1);
  pango_layout_set_single_paragraph_mode(layout.get(), text.wrapWidth ? FALSE : TRUE);
  if (text.wrapWidth) {
    pango_layout_set_width(layout.get(), static_cast<int>(*text.wrapWidth * PANGO_SCALE));
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_alignment(layout.get(), alignmentOf(text.alignment));
    // Alignment is a choice of the person's here, whichever way the text runs.
    pango_layout_set_auto_dir(layout.get(), FALSE);
  }
  return layout;
}

PDFTextExtent extentOf(PangoLayout* layout, const PDFText& text) {
  int width = 0;
  int height = 0;
  pango_layout_get_size(layout, &width, &height);
  return {text.wrapWidth.value_or(static_cast<double>(width) / PANGO_SCALE), static_cast<double>(height) / PANGO_SCALE};
}

}  // namespace

struct PDFTypesetter::State {
  std::string pdf;
  Surface surface{cairo_pdf_surface_create_for_stream(&append, &pdf, 1, 1)};
  Drawing drawing{cairo_create(surface.get())};
};

PDFTypesetter::PDFTypesetter() : state_(std::make_unique<State>()) {
  check(cairo_status(state_->drawing.get()));
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
  cairo_pdf_surface_set_size(state_->surface.get(), extent.width + 2 * room, extent.height + 2 * room);
  cairo_move_to(drawing, room, room);
  cairo_set_source_rgba(drawing, text.color.red, text.color.green, text.color.blue, text.opacity);
  pango_cairo_show_layout(drawing, layout.get());
  cairo_show_page(drawing);
  check(cairo_status(drawing));
  return extent;
}

std::string PDFTypesetter::finish() {
  cairo_surface_finish(state_->surface.get());
  check(cairo_surface_status(state_->surface.get()));
  return std::move(state_->pdf);
}

}  // namespace quirn::platform
