// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_form_fields.h"

#include <fmt/format.h>

namespace quirn::platform {
namespace {

constexpr int deepestField = 64;  // levels of a field tree

// The part of a form's field trees that leads to some widgets.
struct Branches {
  std::vector<QPDFObjectHandle> roots;
  std::vector<QPDFObjectHandle> nodes;                       // all fields and widgets, each once
  std::map<QPDFObjGen, std::vector<QPDFObjectHandle>> kids;  // by parent
};

class BranchFinder {
 public:
  Branches find(const std::vector<QPDFObjectHandle>& widgets) {
    for (QPDFObjectHandle widget : widgets) climb(widget);
    return std::move(branches_);
  }

 private:
  void climb(QPDFObjectHandle node) {
    for (int level = 0; level < deepestField && seen_.insert(node.getObjGen()).second; ++level) {
      branches_.nodes.push_back(node);
      QPDFObjectHandle parent = node.getKey("/Parent");
      if (!isField(parent)) return branches_.roots.push_back(node);
      branches_.kids[parent.getObjGen()].push_back(node);
      node = parent;
    }
  }

  // A field has no type but that of an annotation, where it is one as well.
  static bool isField(QPDFObjectHandle object) {
    if (!object.isDictionary() || !object.isIndirect()) return false;
    QPDFObjectHandle type = object.getKey("/Type");
    return type.isNull() || type.isNameAndEquals("/Annot");
  }

  Branches branches_;
  std::set<QPDFObjGen> seen_;
};

}  // namespace

void PDFFormFields::add(QPDF& qpdf, const std::vector<QPDFObjectHandle>& widgets, PDFObjectCopier& copier,
                        PDFObjectWriter& writer) {
  QPDFObjectHandle form = qpdf.getRoot().getKey("/AcroForm");
  if (widgets.empty() || !form.isDictionary()) return;
  addDefaults(form, copier);
  const Branches branches = BranchFinder().find(widgets);
  std::map<QPDFObjGen, int> numbers;
  for (QPDFObjectHandle node : branches.nodes) {
    const int number = writer.reserve();
    numbers[node.getObjGen()] = number;
    copier.assign(node.getObjGen(), number);
  }
  std::set<QPDFObjGen> roots;
  for (QPDFObjectHandle root : branches.roots) {
    roots.insert(root.getObjGen());
    roots_ += fmt::format("{} 0 R ", numbers.at(root.getObjGen()));
  }
  for (QPDFObjectHandle node : branches.nodes) {
    QPDFObjectHandle field = node.shallowCopy();
    if (const auto kids = branches.kids.find(node.getObjGen()); kids != branches.kids.end()) {
      field.replaceKey("/Kids", QPDFObjectHandle::newArray(kids->second));
    }
    if (field.getKey("/FT").isNameAndEquals("/Sig")) field.removeKey("/V");
    if (roots.contains(node.getObjGen())) completeRoot(field, form);
    writer.write(numbers.at(node.getObjGen()), copier.text(field));
  }
}

// What a field takes from its form is its own in a form of several.
void PDFFormFields::completeRoot(QPDFObjectHandle field, QPDFObjectHandle form) {
  for (const char* key : {"/DA", "/Q"}) {
    if (!field.hasKey(key)) field.replaceKey(key, form.getKey(key));
  }
  if (QPDFObjectHandle name = field.getKey("/T"); name.isString()) {
    field.replaceKey("/T", QPDFObjectHandle::newUnicodeString(freeName(name.getUTF8Value())));
  }
}

void PDFFormFields::addDefaults(QPDFObjectHandle form, PDFObjectCopier& copier) {
  if (appearance_.empty()) appearance_ = copier.entry("/DA", form.getKey("/DA"));
  bool needs = false;
  if (form.getKey("/NeedAppearances").getValueAsBool(needs) && needs) needsAppearances_ = true;
  QPDFObjectHandle resources = form.getKey("/DR");
  if (!resources.isDictionary()) return;
  for (auto& [kind, members] : resources.getDictAsMap()) {
    if (!QPDFObjectHandle(members).isDictionary()) continue;
    for (const auto& [name, value] : QPDFObjectHandle(members).getDictAsMap()) {
      resources_[kind].try_emplace(name, copier.entry(name, value));
    }
  }
}

std::string PDFFormFields::freeName(const std::string& name) {
  std::string free = name;
  for (int count = 2; !names_.insert(free).second; ++count) free = fmt::format("{} ({})", name, count);
  return free;
}

std::string PDFFormFields::text() const {
  if (roots_.empty()) return {};
  std::string resources;
  for (const auto& [kind, members] : resources_) {
    resources += QPDFObjectHandle::newName(kind).unparse() + " << ";
    for (const auto& [name, entry] : members) resources += entry;
    resources += ">> ";
  }
  return fmt::format("<< /Fields [ {}] {}{}{}>>", roots_, appearance_,
                     resources.empty() ? "" : fmt::format("/DR << {}>> ", resources),
                     needsAppearances_ ? "/NeedAppearances true " : "");
}

}  // namespace quirn::platform
