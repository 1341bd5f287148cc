// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_page_tree.h"

#include <fmt/format.h>

#include <set>
#include <string>
#include <utility>

#include "platform/pdf_internal.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

constexpr std::size_t deepestPage = 100;  // levels of the page tree
constexpr int mostCopies = 10'000;        // of pages that are listed again

// Told by its bytes, since most pages of most documents are never looked at any closer.
bool isPageBelow(Object parent, PDFRawObjects& objects, Object node) {
  const auto text = objects.textOf({node.getObjectID(), node.getGeneration()});
  const auto holds = [&](std::string_view part) { return text->find(part) != std::string::npos; };
  return text && text->starts_with("<<") && !holds("/Kids") && (holds("/Type/Page/") || holds("/Type/Page>")) &&
         holds(fmt::format("/Parent {} 0 R", parent.getObjectID()));
}

// Makes the page's own what it inherits, but for what it inherits of `place` as well. Pages go on sharing one
// dictionary.
void keepInherited(QPDF& qpdf, Object page, const Object& place) {
  for (const char* const key : {"/MediaBox", "/CropBox", "/Rotate", "/Resources"}) {
    if (!page.getKey(key).isNull() || !pageAttribute(place, key).isNull()) continue;
    Object value = pageAttribute(page, key);
    page.replaceKey(key, value.isDictionary() ? sharedResources(qpdf, page) : value);
  }
}

// The library's own search is recursive and follows what the file says as deep as it goes.
class PageSearch {
 public:
  PageSearch(QPDF& qpdf, PDFRawObjects* raw) : qpdf_(qpdf), raw_(raw) {}

  PDFPageTree run() {
    enterRoot();
    while (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.next >= level.kids.getArrayNItems()) {
        leave();
      } else {
        enter(level.kids.getArrayItem(level.next++), level.node);
      }
    }
    return std::move(tree_);
  }

 private:
  struct Level {
    Object node;
    Object kids;
    std::size_t firstPage = 0;
    int next = 0;
  };

  // Some catalogs lead to a page, or to a node in the middle of the tree.
  void enterRoot() {
    Object root = qpdf_.getRoot().getKey("/Pages");
    std::set<QPDFObjGen> seen;
    while (root.isDictionary() && seen.insert(root.getObjGen()).second && root.hasKey("/Parent")) {
      tree_.isSound = false;
      Object parent = root.getKey("/Parent");
      if (!parent.getKeyIfDict("/Kids").isArray()) break;
      root = parent;
    }
    enter(root, Object::newNull());
  }

  void enter(Object node, Object parent) {
    const bool isNew = !node.isIndirect() || !tree_.numbers.contains(node.getObjectID());
    if (raw_ != nullptr && isNew && node.isIndirect() && isPageBelow(parent, *raw_, node)) return add(node);
    if (!node.isDictionary()) return regret();
    const bool isPage = !node.getKey("/Kids").isArray();
    if (!isPage && !isNew) return regret();
    if (isPage && isOfType(node, "/Pages")) return regret();
    if (!node.isIndirect()) {
      node = qpdf_.makeIndirectObject(node);
      regret();
    } else if (!isNew || !(isOfType(node, isPage ? "/Page" : "/Pages") || node.getKey("/Type").isNull())) {
      // A page by its place, and something else by another.
      if (++copies_ > mostCopies) throw PDFError(PDFError::Kind::unreadable, "pages listed again and again");
      node = qpdf_.makeIndirectObject(node.shallowCopy());
      regret();
    }
    setRight(node, "/Type", Object::newName(isPage ? "/Page" : "/Pages"));
    // Where pages were found without their tree, what they name as their parent is all that they inherit from.
    if (isPage) keepInherited(qpdf_, node, parent);
    setRight(node, "/Parent", parent);
    isPage ? add(node) : descend(node);
  }

  static bool isOfType(Object node, const char* type) { return node.getKey("/Type").isNameAndEquals(type); }

  void add(Object page) {
    tree_.numbers.insert(page.getObjectID());
    tree_.pages.push_back(page);
  }

  void descend(Object node) {
    if (levels_.size() >= deepestPage) throw PDFError(PDFError::Kind::tooDeep, "page tree");
    tree_.numbers.insert(node.getObjectID());
    levels_.push_back({node, node.getKey("/Kids"), tree_.pages.size()});
  }

  void leave() {
    long long count = -1;
    levels_.back().node.getKey("/Count").getValueAsInt(count);
    if (!std::cmp_equal(count, tree_.pages.size() - levels_.back().firstPage)) regret();
    levels_.pop_back();
  }

  void setRight(Object node, const std::string& key, Object value) {
    Object old = node.getKey(key);
    const bool isRight =
        value.isIndirect() ? old.getObjGen() == value.getObjGen() : old.unparseResolved() == value.unparse();
    if (isRight) return;
    regret();
    node.replaceKey(key, value);
  }

  void regret() { tree_.isSound = false; }

  QPDF& qpdf_;
  PDFRawObjects* raw_;
  PDFPageTree tree_;
  std::vector<Level> levels_;
  int copies_ = 0;
};

}  // namespace

PDFPageTree readPageTree(QPDF& qpdf, PDFRawObjects* raw) {
  return PageSearch(qpdf, raw).run();
}

Object newPageTree(QPDF& qpdf, const std::vector<Object>& pages) {
  for (const Object& page : pages) keepInherited(qpdf, page, Object::newNull());
  Object root = qpdf.makeIndirectObject(Object::newDictionary());
  root.replaceKey("/Type", Object::newName("/Pages"));
  root.replaceKey("/Kids", Object::newArray(pages));
  root.replaceKey("/Count", Object::newInteger(std::ssize(pages)));
  for (Object page : pages) page.replaceKey("/Parent", root);
  return root;
}

}  // namespace quirn::platform
