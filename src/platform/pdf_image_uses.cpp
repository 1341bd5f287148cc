// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_image_uses.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/pdf_content_scanner.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

constexpr std::size_t deepestForm = 16;
constexpr long mostSteps = 2'000'000;
constexpr std::size_t deepestState = 1000;

bool drawsObjects(Object resources) {
  return resources.isDictionary() && (resources.hasKey("/XObject") || resources.hasKey("/Pattern"));
}

// Bytes of a name may be written as "#20".
std::string unescaped(std::string_view name) {
  return name.find('#') == std::string_view::npos ? "/" + std::string(name)
                                                  : Object::parse("/" + std::string(name)).getName();
}

}  // namespace

void PDFImageUses::addPage(Object page) {
  double unit = 1;
  if (!page.getKey("/UserUnit").getValueAsNumber(unit) || !(unit > 0)) unit = 1;
  Object resources = pageAttribute(page, "/Resources");
  const PDFMatrix matrix = PDFMatrix::scaling(unit, unit);
  if (drawsObjects(resources)) addContent(callsIn(decodedContents(page)), resources, matrix);
  addAppearances(page, unit);
}

std::optional<PDFImageUses::Extent> PDFImageUses::largest(Object image) const {
  const auto found = extents_.find(image.getObjGen());
  return found == extents_.end() || steps_ > mostSteps ? std::nullopt : std::optional(found->second);
}

void PDFImageUses::addContent(const std::vector<Call>& calls, Object resources, const PDFMatrix& matrix) {
  addPatterns(resources, matrix);
  Object objects = resources.getKey("/XObject");
  if (!objects.isDictionary()) return;
  for (const Call& call : calls) {
    if (++steps_ > mostSteps) return;
    addObject(objects.getKey(call.name), resources, call.matrix.then(matrix));
  }
}

void PDFImageUses::addObject(Object object, Object outerResources, const PDFMatrix& matrix) {
  if (!object.isStream()) return;
  Object dictionary = object.getDict();
  if (dictionary.getKey("/Subtype").isNameAndEquals("/Image")) addUse(object, matrix);
  if (!dictionary.getKey("/Subtype").isNameAndEquals("/Form")) return;
  Object resources = dictionary.getKey("/Resources");
  addStream(object, resources.isDictionary() ? resources : outerResources, matrix);
}

// Whether or not the content paints with them.
void PDFImageUses::addPatterns(Object resources, const PDFMatrix& matrix) {
  Object patterns = resources.getKey("/Pattern");
  if (!patterns.isDictionary()) return;
  for (const std::string& key : patterns.getKeys()) {
    Object pattern = patterns.getKey(key);
    if (pattern.isStream()) addStream(pattern, pattern.getDict().getKey("/Resources"), matrix);
  }
}

// A form or a pattern.
void PDFImageUses::addStream(Object stream, Object resources, const PDFMatrix& matrix) {
  if (++steps_ > mostSteps || active_.size() >= deepestForm || !drawsObjects(resources)) return;
  if (!active_.insert(stream.getObjGen()).second) return;
  addContent(callsOf(stream), resources, matrixOf(stream.getDict().getKey("/Matrix")).then(matrix));
  active_.erase(stream.getObjGen());
}

void PDFImageUses::addAppearances(Object page, double userUnit) {
  Object annotations = page.getKey("/Annots");
  if (!annotations.isArray()) return;
  for (Object annotation : annotations.getArrayAsVector()) {
    Object appearances = annotation.isDictionary() ? annotation.getKey("/AP") : Object::newNull();
    const auto rectangle = appearances.isDictionary() ? rectangleOf(annotation.getKey("/Rect")) : std::nullopt;
    if (!rectangle) continue;
    Object normal = appearances.getKey("/N");
    if (!normal.isDictionary())
      addAppearance(normal, *rectangle, userUnit);
    else
      for (const std::string& state : normal.getKeys()) addAppearance(normal.getKey(state), *rectangle, userUnit);
  }
}

void PDFImageUses::addAppearance(Object form, const PDFRectangle& rectangle, double userUnit) {
  const auto box = form.isStream() ? rectangleOf(form.getDict().getKey("/BBox")) : std::nullopt;
  if (!box) return;
  addObject(
      form, Object::newDictionary(),
      PDFMatrix::scaling(userUnit * rectangle.width() / box->width(), userUnit * rectangle.height() / box->height()));
}

// The image fills the unit square.
void PDFImageUses::addUse(Object image, const PDFMatrix& matrix) {
  Extent& extent = extents_[image.getObjGen()];
  extent.width = std::max(extent.width, std::hypot(matrix.a, matrix.b));
  extent.height = std::max(extent.height, std::hypot(matrix.c, matrix.d));
}

const std::vector<PDFImageUses::Call>& PDFImageUses::callsOf(Object stream) {
  const auto known = calls_.find(stream.getObjGen());
  if (known != calls_.end()) return known->second;
  return calls_[stream.getObjGen()] = callsIn(decodedStream(stream));
}

std::vector<PDFImageUses::Call> PDFImageUses::callsIn(std::string_view content) {
  std::vector<Call> calls;
  std::vector<PDFMatrix> saved;
  PDFMatrix current;
  PDFContentScanner scanner(content);
  while (const auto word = scanner.next()) {
    if (*word == "q" && saved.size() < deepestState) {
      saved.push_back(current);
    } else if (*word == "Q" && !saved.empty()) {
      current = saved.back();
      saved.pop_back();
    } else if (*word == "cm") {
      if (const auto matrix = scanner.matrix()) current = matrix->then(current);
    } else if (*word == "Do" && ++steps_ <= mostSteps) {
      calls.push_back({unescaped(scanner.name()), current});
    }
  }
  return calls;
}

}  // namespace quirn::platform
