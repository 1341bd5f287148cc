// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_flatten.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/pdf_appearance.h"
#include "platform/pdf_canvas.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

// Annotation flags, ISO 32000-1, table 165.
constexpr long long hidden = 1 << 1;
constexpr long long noRotate = 1 << 4;
constexpr long long noView = 1 << 5;

long long flagsOf(Object annotation) {
  long long flags = 0;
  annotation.getKey("/F").getValueAsInt(flags);
  return flags;
}

bool isShown(Object annotation) {
  return (flagsOf(annotation) & (hidden | noView)) == 0 && !annotation.getKey("/Subtype").isNameAndEquals("/Popup");
}

bool isLink(Object annotation) {
  return annotation.getKey("/Subtype").isNameAndEquals("/Link");
}

// The normal appearance, in its current state if it has several.
std::optional<Object> ownAppearance(Object annotation) {
  Object appearances = annotation.getKey("/AP");
  if (!appearances.isDictionary()) return std::nullopt;
  Object normal = appearances.getKey("/N");
  if (normal.isDictionary()) {
    Object state = annotation.getKey("/AS");
    normal = normal.getKey(state.isName() ? state.getName() : "/Off");
    // A state without an appearance shows nothing, which is one too.
    if (!normal.isStream()) return Object::newNull();
  }
  return normal.isStream() ? std::optional(normal) : std::nullopt;
}

// Where the appearance goes: its box, turned by its own matrix, onto the annotation's rectangle (12.5.5).
std::optional<PDFMatrix> placement(Object form, const PDFRectangle& rectangle) {
  const auto box = rectangleOf(form.getDict().getKey("/BBox"));
  if (!box) return std::nullopt;
  const PDFRectangle turned = matrixOf(form.getDict().getKey("/Matrix")).apply(*box);
  if (turned.isEmpty()) return std::nullopt;
  return PDFMatrix::translation(-turned.left, -turned.bottom)
      .then(PDFMatrix::scaling(rectangle.width() / turned.width(), rectangle.height() / turned.height()))
      .then(PDFMatrix::translation(rectangle.left, rectangle.bottom));
}

// Keeps what must not turn with the page upright, its upper left corner in place.
PDFMatrix withoutTurn(const PDFRectangle& rectangle, int rotation) {
  return PDFMatrix::translation(-rectangle.left, -rectangle.top)
      .then(PDFMatrix::quarterTurns(-rotation))
      .then(PDFMatrix::translation(rectangle.left, rectangle.top));
}

class Flattening {
 public:
  explicit Flattening(PDFDocument& document)
      : document_(document), qpdf_(*document.internals().qpdf), appearances_(qpdf_) {}

  void gather(std::size_t page);
  void finish();

 private:
  struct Page {
    std::size_t number;
    std::vector<PlacedObject> drawn;
    std::vector<Object> links;
  };

  void draw(Page& page, Object annotation, int rotation);
  std::optional<PlacedObject> placed(Object annotation, const PDFRectangle& rectangle);

  PDFDocument& document_;
  QPDF& qpdf_;
  PDFAppearances appearances_;
  std::vector<Page> pages_;
};

void Flattening::gather(std::size_t number) {
  Object annotations = document_.internals().pages.at(number).getKey("/Annots");
  if (!annotations.isArray()) return;
  Page page{number, {}, {}};
  const int rotation = document_.rotation(number);
  for (Object annotation : annotations.getArrayAsVector()) {
    if (annotation.isDictionary()) draw(page, annotation, rotation);
  }
  pages_.push_back(std::move(page));
}

void Flattening::draw(Page& page, Object annotation, int rotation) {
  const auto rectangle = rectangleOf(annotation.getKey("/Rect"));
  if (rectangle && isShown(annotation)) {
    if (auto item = placed(annotation, *rectangle)) {
      if ((flagsOf(annotation) & noRotate) != 0) item->matrix = item->matrix.then(withoutTurn(*rectangle, rotation));
      page.drawn.push_back(*item);
    }
  }
  if (!isLink(annotation)) return;
  annotation.replaceKey("/Border",
                        Object::newArray({Object::newInteger(0), Object::newInteger(0), Object::newInteger(0)}));
  for (const char* const key : {"/BS", "/AP"}) annotation.removeKey(key);
  page.links.push_back(annotation);
}

std::optional<PlacedObject> Flattening::placed(Object annotation, const PDFRectangle& rectangle) {
  auto own = appearances_.mustBeBuilt(annotation) ? std::nullopt : ownAppearance(annotation);
  if (own && own->isNull()) return std::nullopt;
  if (!own) {
    const auto built = appearances_.build(annotation, rectangle);
    return built ? std::optional(PlacedObject{*built, {}}) : std::nullopt;
  }
  const auto matrix = placement(*own, rectangle);
  if (!matrix) return std::nullopt;
  return PlacedObject{appearances_.asForm(*own, annotation), *matrix};
}

void Flattening::finish() {
  appearances_.finish();
  for (Page& page : pages_) {
    Object object = document_.internals().pages.at(page.number);
    drawOnPage(qpdf_, object, page.drawn);
    object.removeKey("/Annots");
    if (!page.links.empty()) object.replaceKey("/Annots", Object::newArray(page.links));
  }
  Object root = qpdf_.getRoot();
  // What a signature promised about the document has gone with it.
  for (const char* const key : {"/AcroForm", "/Perms"}) root.removeKey(key);
}

}  // namespace

void flattenAnnotations(PDFDocument& document, const std::stop_token& stop) {
  document.internals().guarded(PDFError::Kind::unreadable, [&] {
    Flattening flattening(document);
    for (std::size_t page = 0; page < document.pageCount(); ++page) {
      if (stop.stop_requested()) return;
      flattening.gather(page);
    }
    flattening.finish();
  });
}

}  // namespace quirn::platform
