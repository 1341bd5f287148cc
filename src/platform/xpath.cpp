// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/xpath.h"

#include <fmt/format.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string_view>

#include "platform/loaded_library.h"

namespace quirn::platform {
namespace {

// Opened when first asked: linked, libxml2 would add 1.5 ms to every start of the program, most of it
// for ICU, which it brings along.
struct LibXml {
  decltype(xmlInitParser)* initParser = nullptr;
  decltype(xmlSetGenericErrorFunc)* setGenericErrorFunction = nullptr;
  decltype(xmlReadMemory)* readMemory = nullptr;
  decltype(xmlFreeDoc)* freeDoc = nullptr;
  decltype(xmlDocGetRootElement)* rootElement = nullptr;
  decltype(xmlXPathNewContext)* newContext = nullptr;
  decltype(xmlXPathFreeContext)* freeContext = nullptr;
  decltype(xmlXPathRegisterNs)* registerNamespace = nullptr;
  decltype(xmlXPathNsLookup)* namespaceOf = nullptr;
  decltype(xmlXPathEvalExpression)* evaluate = nullptr;
  decltype(xmlXPathFreeObject)* freeObject = nullptr;
  decltype(xmlXPathNodeSetSort)* sort = nullptr;
  decltype(xmlXPathCastToString)* castToString = nullptr;
  decltype(xmlBufferCreate)* newBuffer = nullptr;
  decltype(xmlBufferFree)* freeBuffer = nullptr;
  decltype(xmlBufferEmpty)* emptyBuffer = nullptr;
  decltype(xmlNodeDump)* dump = nullptr;
  xmlFreeFunc* freeMemory = nullptr;  // a variable

  static const LibXml& loaded() {
    static const LibXml library;
    return library;
  }

 private:
  LibXml() {
    const LoadedLibrary library("libxml2.so.2");
    library.find("xmlInitParser", initParser);
    library.find("xmlSetGenericErrorFunc", setGenericErrorFunction);
    library.find("xmlReadMemory", readMemory);
    library.find("xmlFreeDoc", freeDoc);
    library.find("xmlDocGetRootElement", rootElement);
    library.find("xmlXPathNewContext", newContext);
    library.find("xmlXPathFreeContext", freeContext);
    library.find("xmlXPathRegisterNs", registerNamespace);
    library.find("xmlXPathNsLookup", namespaceOf);
    library.find("xmlXPathEvalExpression", evaluate);
    library.find("xmlXPathFreeObject", freeObject);
    library.find("xmlXPathNodeSetSort", sort);
    library.find("xmlXPathCastToString", castToString);
    library.find("xmlBufferCreate", newBuffer);
    library.find("xmlBufferFree", freeBuffer);
    library.find("xmlBufferEmpty", emptyBuffer);
    library.find("xmlNodeDump", dump);
    library.find("xmlFree", freeMemory);
    initParser();
  }
};

template <class Handle>
using Owner = std::unique_ptr<Handle, void (*)(Handle*)>;

const xmlChar* bytes(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string text(const xmlChar* characters) {
  return characters == nullptr ? "" : reinterpret_cast<const char*>(characters);
}

// libxml2 prints some complaints besides handing them over.
void saysNothing(void*, const char*, ...) {}

struct Fault {
  int code;
  std::string_view words;
  bool isAtCharacter;  // libxml2's position is where the expression stopped to be one
};
constexpr std::array<Fault, 14> faults = {{
    {XPATH_NUMBER_ERROR, "a number can’t be read", true},
    {XPATH_UNFINISHED_LITERAL_ERROR, "a quote is not closed", true},
    {XPATH_START_LITERAL_ERROR, "a text in quotes is missing", true},
    {XPATH_VARIABLE_REF_ERROR, "the name of a variable is missing", true},
    {XPATH_UNDEF_VARIABLE_ERROR, "there is no such variable", false},
    {XPATH_INVALID_PREDICATE_ERROR, "a square bracket is not closed", true},
    {XPATH_EXPR_ERROR, "the expression can’t be read", true},
    {XPATH_UNCLOSED_ERROR, "a parenthesis is not closed", true},
    {XPATH_UNKNOWN_FUNC_ERROR, "there is no such function", false},
    {XPATH_INVALID_TYPE, "a function or operator is given what it can’t take", false},
    {XPATH_INVALID_ARITY, "a function is given too many or too few arguments", false},
    {XPATH_UNDEF_PREFIX_ERROR, "the document declares no such namespace prefix", false},
    {XPATH_INVALID_CHAR_ERROR, "a character is not allowed", true},
    {XPATH_RECURSION_LIMIT_EXCEEDED, "the expression is nested too deeply", false},
}};

// What libxml2 has to say about an expression; sentences it has none for a handler of ours.
struct Complaint {
  int code = XPATH_EXPRESSION_OK;
  std::size_t character = 0;  // counted from 1

  static void take(void* complaint, xmlErrorPtr error) {
    auto& self = *static_cast<Complaint*>(complaint);
    // Counted on from the errors of the parser.
    self.code = error->code - static_cast<int>(XML_XPATH_EXPRESSION_OK);
    const std::string_view expression = error->str1 == nullptr ? "" : error->str1;
    const auto begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; };
    const auto offset = static_cast<std::size_t>(std::max(error->int1, 0));
    self.character = static_cast<std::size_t>(std::ranges::count_if(expression.substr(0, offset), begins)) + 1;
  }

  std::string words() const {
    const auto* const known = std::ranges::find(faults, code, &Fault::code);
    if (known == faults.end()) return "it can’t be evaluated.";
    return known->isAtCharacter ? fmt::format("{} (at character {}).", known->words, character)
                                : fmt::format("{}.", known->words);
  }
};

class Evaluation {
 public:
  Evaluation(const std::string& document, std::size_t limit)
      : document_(read(document)), context_(xml_.newContext(document_.get()), xml_.freeContext), limit_(limit) {
    if (!context_) throw std::bad_alloc();
    // Some seconds of work: an expression may walk the document once for each of its nodes.
    context_->opLimit = 100'000'000;
    xml_.setGenericErrorFunction(nullptr, saysNothing);  // of this thread
    context_->error = Complaint::take;
    context_->userData = &complaint_;
    for (xmlNodePtr node = xml_.rootElement(document_.get()); node != nullptr; node = following(node)) {
      registerNamespaces(node);
    }
  }

  std::vector<std::string> results(const std::string& expression) {
    const Owner<xmlXPathObject> object(xml_.evaluate(bytes(expression), context_.get()), xml_.freeObject);
    if (!object) fail();
    if (object->type == XPATH_NODESET) return nodes(object->nodesetval);
    const std::unique_ptr<xmlChar, xmlFreeFunc> value(xml_.castToString(object.get()), *xml_.freeMemory);
    return {text(value.get())};
  }

 private:
  Owner<xmlDoc> read(const std::string& document) const {
    constexpr int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NOBLANKS |
                            XML_PARSE_IGNORE_ENC | XML_PARSE_HUGE | XML_PARSE_COMPACT;
    if (document.size() > std::numeric_limits<int>::max()) throw XPathError(XPathError::Reason::tooMuchWork, "");
    Owner<xmlDoc> read(xml_.readMemory(document.data(), static_cast<int>(document.size()), nullptr, "UTF-8", options),
                       xml_.freeDoc);
    if (!read) throw XPathError(XPathError::Reason::document, "");
    return read;
  }

  // In the order of the document, without recursion.
  static xmlNodePtr following(xmlNodePtr node) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
    while (node != nullptr && node->next == nullptr) node = node->parent;
    return node == nullptr ? nullptr : node->next;
  }

  void registerNamespaces(xmlNodePtr node) {
    if (node->type != XML_ELEMENT_NODE) return;
    for (xmlNsPtr space = node->nsDef; space != nullptr; space = space->next) {
      if (space->prefix == nullptr || xml_.namespaceOf(context_.get(), space->prefix) != nullptr) continue;
      xml_.registerNamespace(context_.get(), space->prefix, space->href);
    }
  }

  [[noreturn]] void fail() const {
    using Reason = XPathError::Reason;
    const bool isLimit = complaint_.code == XPATH_OP_LIMIT_EXCEEDED;
    throw XPathError(isLimit ? Reason::tooMuchWork : Reason::expression, complaint_.words());
  }

  std::vector<std::string> nodes(xmlNodeSetPtr set) const {
    std::vector<std::string> texts;
    if (set == nullptr) return texts;
    xml_.sort(set);
    const Owner<xmlBuffer> buffer(xml_.newBuffer(), xml_.freeBuffer);
    std::size_t total = 0;
    for (int i = 0; i < set->nodeNr; ++i) {
      xml_.emptyBuffer(buffer.get());
      xml_.dump(buffer.get(), document_.get(), set->nodeTab[i], 0, 0);
      texts.push_back(text(buffer->content));
      total += texts.back().size();
      if (total > limit_) throw XPathError(XPathError::Reason::outputTooLarge, "");
    }
    return texts;
  }

  const LibXml& xml_ = LibXml::loaded();
  Complaint complaint_;
  Owner<xmlDoc> document_;
  Owner<xmlXPathContext> context_;
  std::size_t limit_;
};

}  // namespace

std::vector<std::string> xpathResults(const std::string& document, const std::string& expression, std::size_t limit) {
  return Evaluation(document, limit).results(expression);
}

}  // namespace quirn::platform
