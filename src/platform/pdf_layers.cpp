// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_layers.h"

#include <fmt/format.h>

#include <set>

namespace quirn::platform {
namespace {

constexpr int deepestGroup = 32;  // levels of the list that a reader shows

std::set<QPDFObjGen> membersOf(QPDFObjectHandle array) {
  std::set<QPDFObjGen> members;
  for (int i = 0; array.isArray() && i < array.getArrayNItems(); ++i) members.insert(array.getArrayItem(i).getObjGen());
  return members;
}

class Selection {
 public:
  explicit Selection(PDFObjectCopier& copier) : copier_(copier) {}

  // The items of an array without the layers that weren't taken over, and the texts and arrays that stood with them.
  std::string items(QPDFObjectHandle array, int level = 0) const {
    std::string text;
    for (int i = 0; array.isArray() && i < array.getArrayNItems(); ++i) {
      QPDFObjectHandle item = array.getArrayItem(i);
      if (item.isArray() && level < deepestGroup) {
        const std::string inside = items(item, level + 1);
        if (!inside.empty()) text += "[ " + inside + "] ";
      } else if (item.isIndirect() ? copier_.isCopied(item.getObjGen()) : item.isString()) {
        text += copier_.text(item) + " ";
      }
    }
    return text.find(" 0 R") == std::string::npos ? "" : text;
  }

  // A usage application dictionary with what is left of its layers.
  std::string usage(QPDFObjectHandle dictionary) const {
    const std::string layers = items(dictionary.getKey("/OCGs"));
    if (layers.empty()) return {};
    return fmt::format("<< {}{}/OCGs [ {}] >> ", copier_.entry("/Event", dictionary.getKey("/Event")),
                       copier_.entry("/Category", dictionary.getKey("/Category")), layers);
  }

 private:
  PDFObjectCopier& copier_;
};

}  // namespace

void PDFLayers::add(QPDF& qpdf, PDFObjectCopier& copier) {
  QPDFObjectHandle properties = qpdf.getRoot().getKey("/OCProperties");
  if (!properties.isDictionary()) return;
  QPDFObjectHandle layers = properties.getKey("/OCGs");
  QPDFObjectHandle state = properties.getKey("/D");
  if (!state.isDictionary()) state = QPDFObjectHandle::newDictionary();
  const bool isOffAtFirst = state.getKey("/BaseState").isNameAndEquals("/OFF");
  const std::set<QPDFObjGen> changed = membersOf(state.getKey(isOffAtFirst ? "/ON" : "/OFF"));
  for (int i = 0; layers.isArray() && i < layers.getArrayNItems(); ++i) {
    QPDFObjectHandle layer = layers.getArrayItem(i);
    if (!layer.isIndirect() || !copier.isCopied(layer.getObjGen())) continue;
    const std::string reference = copier.text(layer) + " ";
    all_ += reference;
    if (changed.contains(layer.getObjGen()) != isOffAtFirst) off_ += reference;
  }
  const Selection selection(copier);
  order_ += selection.items(state.getKey("/Order"));
  locked_ += selection.items(state.getKey("/Locked"));
  exclusive_ += selection.items(state.getKey("/RBGroups"));
  QPDFObjectHandle usage = state.getKey("/AS");
  for (int i = 0; usage.isArray() && i < usage.getArrayNItems(); ++i) {
    if (usage.getArrayItem(i).isDictionary()) usage_ += selection.usage(usage.getArrayItem(i));
  }
}

std::string PDFLayers::text() const {
  if (all_.empty()) return {};
  return fmt::format("<< /OCGs [ {}] /D << /OFF [ {}] /Order [ {}] /Locked [ {}] /RBGroups [ {}] /AS [ {}] >> >>", all_,
                     off_, order_, locked_, exclusive_, usage_);
}

}  // namespace quirn::platform
