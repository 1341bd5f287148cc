// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_object_graph.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <qpdf/Buffer.hh>
#include <set>
#include <span>
#include <string>
#include <utility>

#include "platform/digest.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

bool isContainer(Object object) {
  return object.isDictionary() || object.isArray() || object.isStream();
}

// Calls with every value in a dictionary, stream dictionary or array, and takes what it returns in its place.
template <class Visit>
void forEachValue(Object container, const Visit& visit) {
  if (container.isArray()) {
    for (int i = 0; i < container.getArrayNItems(); ++i) {
      const Object value = container.getArrayItem(i);
      if (const auto other = visit(value)) container.setArrayItem(i, *other);
    }
    return;
  }
  Object dictionary = container.isStream() ? container.getDict() : container;
  for (const std::string& key : dictionary.getKeys()) {
    if (const auto other = visit(dictionary.getKey(key))) dictionary.replaceKey(key, *other);
  }
}

bool canBeShared(Object object) {
  if (object.isStream()) return true;
  if (!object.isDictionary()) return false;
  static const std::set<std::string> types{"/Font", "/FontDescriptor", "/ExtGState", "/Encoding"};
  Object type = object.getKey("/Type");
  return type.isName() && types.contains(type.getName());
}

std::string digestOfData(Object stream) {
  const auto data = stream.getRawStreamData();
  Digest digest(DigestAlgorithm::sha256);
  digest.update(std::as_bytes(std::span(data->getBuffer(), data->getSize())));
  return digest.finishHex();
}

// By which object each is to be replaced, among those of one and the same text.
using Replacements = std::map<QPDFObjGen, Object>;

void addEqual(const std::vector<Object>& alike, Replacements& replacements) {
  std::map<std::string, Object> firsts;
  for (Object object : alike) {
    const auto [first, isNew] = firsts.emplace(object.isStream() ? digestOfData(object) : std::string(), object);
    if (!isNew) replacements.emplace(object.getObjGen(), first->second);
  }
}

Replacements equalObjects(const std::vector<Object>& objects) {
  std::map<std::string, std::vector<Object>> byText;
  for (Object object : objects) {
    if (canBeShared(object))
      byText[object.isStream() ? object.getDict().unparse() : object.unparseResolved()].push_back(object);
  }
  Replacements replacements;
  for (const auto& [text, alike] : byText) {
    if (alike.size() > 1) addEqual(alike, replacements);
  }
  return replacements;
}

void replace(const std::vector<Object>& objects, const Replacements& replacements) {
  for (const Object& object : objects) {
    std::vector<Object> open{object};
    while (!open.empty()) {
      const Object container = open.back();
      open.pop_back();
      if (!isContainer(container)) continue;
      forEachValue(container, [&](Object value) -> std::optional<Object> {
        if (!value.isIndirect()) {
          open.push_back(value);
          return std::nullopt;
        }
        const auto found = replacements.find(value.getObjGen());
        return found == replacements.end() ? std::nullopt : std::optional(found->second);
      });
    }
  }
}

}  // namespace

std::vector<Object> reachableObjects(QPDF& document) {
  std::vector<Object> reached;
  std::set<QPDFObjGen> seen;
  std::vector<Object> open{document.getTrailer()};
  while (!open.empty()) {
    const Object container = open.back();
    open.pop_back();
    forEachValue(container, [&](Object value) -> std::optional<Object> {
      if (!isContainer(value)) return std::nullopt;
      if (value.isIndirect()) {
        if (!seen.insert(value.getObjGen()).second) return std::nullopt;
        reached.push_back(value);
      }
      open.push_back(value);
      return std::nullopt;
    });
  }
  return reached;
}

void shareEqualObjects(QPDF& document) {
  // Objects become equal when what they lead to has become one: a font after its descriptor after its file.
  constexpr int mostRounds = 6;
  for (int round = 0; round < mostRounds; ++round) {
    const std::vector<Object> objects = reachableObjects(document);
    const Replacements replacements = equalObjects(objects);
    if (replacements.empty()) return;
    replace(objects, replacements);
  }
}

}  // namespace quirn::platform
