// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_destination.h"

#include <qpdf/QPDFNameTreeObjectHelper.hh>

namespace quirn::platform {
namespace {

// In the dictionary of PDF 1.1, or in the name tree that followed it.
QPDFObjectHandle named(QPDF& qpdf, QPDFObjectHandle name) {
  QPDFObjectHandle root = qpdf.getRoot();
  if (name.isName()) return root.getKeyIfDict("/Dests").getKeyIfDict(name.getName());
  QPDFObjectHandle tree = root.getKeyIfDict("/Names").getKeyIfDict("/Dests");
  QPDFObjectHandle found = QPDFObjectHandle::newNull();
  if (tree.isDictionary()) QPDFNameTreeObjectHelper(tree, qpdf, false).findObject(name.getUTF8Value(), found);
  return found;
}

}  // namespace

QPDFObjectHandle destinationOf(QPDF& qpdf, QPDFObjectHandle item) {
  QPDFObjectHandle destination = item.getKeyIfDict("/Dest");
  if (destination.isNull()) {
    QPDFObjectHandle action = item.getKeyIfDict("/A");
    if (action.getKeyIfDict("/S").isNameAndEquals("/GoTo")) destination = action.getKeyIfDict("/D");
  }
  if (destination.isName() || destination.isString()) destination = named(qpdf, destination);
  if (destination.isDictionary()) destination = destination.getKey("/D");
  return destination.isArray() && destination.getArrayNItems() > 0 ? destination : QPDFObjectHandle::newNull();
}

}  // namespace quirn::platform
