// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_assembly.h"

#include <fmt/format.h>

#include <array>
#include <map>
#include <set>

#include "platform/pdf_destination.h"
#include "platform/pdf_form_fields.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_layers.h"
#include "platform/pdf_object_copier.h"
#include "platform/pdf_object_writer.h"

namespace quirn::platform {
namespace {

constexpr std::size_t pagesPerNode = 64;

struct Node {
  int number = 0;
  std::size_t count = 0;
  std::string kids;
};

// What a page doesn't take along: its place in the tree, the threads and the structure of the whole document.
bool staysBehind(const std::string& key) {
  static const std::set<std::string> keys{"/Type", "/Parent", "/Kids", "/Count", "/B", "/StructParents", "/Annots"};
  return keys.contains(key);
}

bool isOfSubtype(QPDFObjectHandle annotation, const char* subtype) {
  return annotation.isDictionary() && annotation.getKey("/Subtype").isNameAndEquals(subtype);
}

bool isName(QPDFObjectHandle destination) {
  return destination.isName() || destination.isString();
}

// A link by name finds nothing in a document without the names.
bool leadsByName(QPDFObjectHandle annotation) {
  if (!isOfSubtype(annotation, "/Link")) return false;
  QPDFObjectHandle action = annotation.getKey("/A");
  const bool goes = action.isDictionary() && action.getKey("/S").isNameAndEquals("/GoTo");
  return isName(annotation.getKey("/Dest")) || (goes && isName(action.getKey("/D")));
}

std::vector<QPDFObjectHandle> annotationsOf(QPDFObjectHandle page) {
  QPDFObjectHandle annotations = page.getKey("/Annots");
  return annotations.isArray() ? annotations.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

// The pages of one source on their way into the new document.
class PageCopy {
 public:
  PageCopy(const PDFDocument::Internals& source, PDFObjectWriter& writer)
      : qpdf_(*source.qpdf), writer_(writer), copier_(source, PDFObjectCopier::Pages::assigned, writer) {}

  PDFObjectCopier& copier() { return copier_; }

  // The numbers of the pages, before anything refers to them.
  std::vector<int> reserve(std::span<const QPDFObjectHandle> pages) {
    std::vector<int> numbers;
    std::set<QPDFObjGen> seen;
    for (QPDFObjectHandle page : pages) {
      numbers.push_back(writer_.reserve());
      if (seen.insert(page.getObjGen()).second) copier_.assign(page.getObjGen(), numbers.back());
    }
    return numbers;
  }

  std::vector<QPDFObjectHandle> widgetsOf(std::span<const QPDFObjectHandle> pages) const {
    std::vector<QPDFObjectHandle> widgets;
    for (QPDFObjectHandle page : pages) {
      for (QPDFObjectHandle annotation : annotationsOf(page)) {
        if (annotation.isIndirect() && isOfSubtype(annotation, "/Widget")) widgets.push_back(annotation);
      }
    }
    return widgets;
  }

  void write(QPDFObjectHandle page, int number, int parent) {
    std::string text = fmt::format("<< /Type /Page /Parent {} 0 R ", parent);
    for (const auto& [key, value] : page.getDictAsMap()) {
      if (!staysBehind(key)) text += copier_.entry(key, value);
    }
    for (const char* key : {"/MediaBox", "/Resources", "/CropBox", "/Rotate"}) {
      if (page.getKey(key).isNull()) text += inherited(page, key);
    }
    text += annotations(page);
    writer_.write(number, text + ">>");
    copier_.drain();
  }

 private:
  std::string inherited(QPDFObjectHandle page, const std::string& key) {
    std::set<QPDFObjGen> seen{page.getObjGen()};
    QPDFObjectHandle node = page.getKey("/Parent");
    for (; node.isDictionary() && seen.insert(node.getObjGen()).second; node = node.getKey("/Parent")) {
      QPDFObjectHandle value = node.getKey(key);
      if (value.isNull()) continue;
      if (value.isIndirect() || !value.isDictionary()) return copier_.entry(key, value);
      return fmt::format("{} {} 0 R ", key, shared(node.getObjGen(), value));
    }
    return key == "/Resources" ? "/Resources << >> " : "";
  }

  // Pages that inherit one dictionary go on sharing it.
  int shared(QPDFObjGen owner, QPDFObjectHandle dictionary) {
    const auto [found, isNew] = shared_.try_emplace(owner, 0);
    if (isNew) {
      found->second = writer_.reserve();
      writer_.write(found->second, copier_.text(dictionary));
    }
    return found->second;
  }

  std::string annotations(QPDFObjectHandle page) {
    std::string text;
    for (QPDFObjectHandle annotation : annotationsOf(page)) {
      text += (leadsByName(annotation) ? explicitLink(annotation) : copier_.text(annotation)) + " ";
    }
    return text.empty() ? "" : "/Annots [ " + text + "] ";
  }

  std::string explicitLink(QPDFObjectHandle annotation) {
    if (annotation.isIndirect() && copier_.isCopied(annotation.getObjGen())) return copier_.text(annotation);
    QPDFObjectHandle destination = destinationOf(qpdf_, annotation);
    if (!destination.isArray()) return copier_.text(annotation);
    QPDFObjectHandle link = annotation.shallowCopy();
    link.removeKey("/A");
    link.replaceKey("/Dest", destination);
    if (!annotation.isIndirect()) return copier_.text(link);
    const int number = writer_.reserve();
    copier_.assign(annotation.getObjGen(), number);
    writer_.write(number, copier_.text(link));
    return copier_.text(annotation);
  }

  QPDF& qpdf_;
  PDFObjectWriter& writer_;
  PDFObjectCopier copier_;
  std::map<QPDFObjGen, int> shared_;
};

}  // namespace

struct PDFAssembly::State {
  explicit State(int descriptor) : writer(descriptor) {}

  // The node for the next page.
  Node& node() {
    if (nodes.empty() || nodes.back().count == pagesPerNode) nodes.push_back({.number = writer.reserve()});
    return nodes.back();
  }

  PDFObjectWriter writer;
  int catalog = writer.reserve();
  int root = writer.reserve();
  std::vector<Node> nodes;
  PDFFormFields fields;
  PDFLayers layers;
  std::string version;  // the catalog's entry
  std::string origin;   // what tells this document from others of the same layout
};

PDFAssembly::PDFAssembly(int descriptor) : state_(std::make_unique<State>(descriptor)) {}

PDFAssembly::~PDFAssembly() = default;

std::size_t PDFAssembly::append(const PDFDocument& source, std::size_t first, std::size_t count,
                                const std::stop_token& stop) {
  const PDFDocument::Internals& internals = source.internals();
  std::size_t arrived = 0;
  if (source.isLocked()) return arrived;
  internals.guarded(PDFError::Kind::writeFailed, [&] {
    State& state = *state_;
    QPDF& qpdf = *internals.qpdf;
    const auto pages = std::span(internals.pages).subspan(first, count);
    PDFDocument::Internals::requireReadable(pages);
    PageCopy copy(internals, state.writer);
    const std::vector<int> numbers = copy.reserve(pages);
    state.fields.add(qpdf, copy.widgetsOf(pages), copy.copier(), state.writer);
    for (; arrived < count && !stop.stop_requested(); ++arrived) {
      Node& node = state.node();
      internals.mendPage(pages[arrived]);
      copy.write(pages[arrived], numbers[arrived], node.number);
      node.kids += fmt::format("{} 0 R ", numbers[arrived]);
      ++node.count;
    }
    state.layers.add(qpdf, copy.copier());
    copy.copier().drain();
    if (state.version.empty()) state.version = versionEntry(qpdf.getPDFVersion());
    state.origin += qpdf.getTrailer().getKey("/ID").unparse() + fmt::format("{} {} ", first, count);
  });
  return arrived;
}

void PDFAssembly::finish() {
  State& state = *state_;
  try {
    std::string kids;
    std::size_t count = 0;
    for (const Node& node : state.nodes) {
      kids += fmt::format("{} 0 R ", node.number);
      count += node.count;
      state.writer.write(node.number, fmt::format("<< /Type /Pages /Parent {} 0 R /Count {} /Kids [ {}] >>", state.root,
                                                  node.count, node.kids));
    }
    state.writer.write(state.root, fmt::format("<< /Type /Pages /Count {} /Kids [ {}] >>", count, kids));
    const std::string form = state.fields.text();
    const std::string layers = state.layers.text();
    state.writer.write(state.catalog, fmt::format("<< /Type /Catalog {}/Pages {} 0 R{}{} >>", state.version, state.root,
                                                  form.empty() ? "" : " /AcroForm " + form,
                                                  layers.empty() ? "" : " /OCProperties " + layers));
    state.writer.finish(fmt::format("/Root {} 0 R", state.catalog), state.origin);
  } catch (const std::exception& error) {
    throw PDFError(PDFError::Kind::writeFailed, error.what());
  }
}

}  // namespace quirn::platform
