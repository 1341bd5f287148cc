// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_object_copier.h"

#include <algorithm>
#include <charconv>

namespace quirn::platform {
namespace {

constexpr std::int64_t copySize = 256 << 10;  // bytes of a stream at a time

}  // namespace

PDFObjectCopier::PDFObjectCopier(const PDFDocument::Internals& source, Pages pages, PDFObjectWriter& writer,
                                 const PDFEncryption* encryption)
    : source_(source), pages_(pages), writer_(writer), encryption_(encryption) {
  rewriting_.numberOf = [this](PDFReference reference) { return numberOf(reference); };
  rewriting_.integerAt = [this](PDFReference reference) { return integerAt(reference); };
  if (encryption_ != nullptr) {
    rewriting_.stringText = [this](std::string_view bytes) { return encryptedString(*encryption_, bytes); };
  }
}

std::uint64_t PDFObjectCopier::keyOf(PDFReference reference) {
  return std::uint64_t{static_cast<std::uint32_t>(reference.number)} << 32 |
         static_cast<std::uint32_t>(reference.generation);
}

int PDFObjectCopier::numberOf(PDFReference reference) {
  const auto [found, isNew] = numbers_.try_emplace(keyOf(reference), 0);
  if (!isNew) return found->second;
  if (pages_ == Pages::assigned && source_.pageTree.contains(reference.number)) return 0;
  found->second = writer_.reserve();
  queue_.emplace_back(reference, found->second);
  return found->second;
}

bool PDFObjectCopier::isCopied(QPDFObjGen object) const {
  const auto found = numbers_.find(keyOf({object.getObj(), object.getGen()}));
  return found != numbers_.end() && found->second != 0;
}

void PDFObjectCopier::drain() {
  while (!queue_.empty()) {
    const auto [reference, number] = queue_.front();
    queue_.pop_front();
    copy(reference, number);
  }
}

void PDFObjectCopier::copy(PDFReference reference, int number) {
  text_.clear();
  const auto object = source_.raw ? source_.raw->scan(reference, rewriting_, text_) : std::nullopt;
  if (!object) return copyParsed(reference, number);
  if (!object->isStream) return writer_.write(number, text_);
  writer_.beginStream(number, text_, object->dataLength);
  copyBytes(static_cast<std::int64_t>(object->dataOffset), object->dataLength);
  writer_.endStream();
}

std::optional<std::int64_t> PDFObjectCopier::integerAt(PDFReference reference) const {
  const std::string text = source_.raw->textOf(reference).value_or("");
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

void PDFObjectCopier::copyBytes(std::int64_t offset, std::int64_t length) {
  while (length > 0) {
    const std::string_view bytes = source_.raw->bytes(offset, static_cast<std::size_t>(std::min(length, copySize)));
    if (bytes.empty()) throw std::runtime_error("a stream ends with the file");
    writer_.append(bytes);
    offset += std::ssize(bytes);
    length -= std::ssize(bytes);
  }
}

void PDFObjectCopier::copyParsed(PDFReference reference, int number) {
  QPDFObjectHandle object = source_.qpdf->getObject(reference.number, reference.generation);
  if (!object.isStream()) return writer_.write(number, resolved(object));
  QPDFObjectHandle dictionary = object.getDict().shallowCopy();
  dictionary.removeKey("/Length");
  const auto data = object.getRawStreamData();
  writer_.beginStream(number, dictionaryText(dictionary), static_cast<std::int64_t>(data->getSize()));
  writer_.append({reinterpret_cast<const char*>(data->getBuffer()), data->getSize()});
  writer_.endStream();
}

std::string PDFObjectCopier::text(QPDFObjectHandle object) {
  if (!object.isIndirect()) return resolved(object);
  const int number = numberOf(object.getObjGen());
  return number == 0 ? "null" : std::to_string(number) + " 0 R";
}

std::string PDFObjectCopier::entry(const std::string& key, QPDFObjectHandle value) {
  std::string result = text(value);
  return result == "null" ? "" : QPDFObjectHandle::newName(key).unparse() + " " + result + " ";
}

// What the library reads is nested to a bounded depth.
std::string PDFObjectCopier::resolved(QPDFObjectHandle object) {
  if (object.isDictionary()) return dictionaryText(object);
  if (object.isString() && encryption_ != nullptr) return encryptedString(*encryption_, object.getStringValue());
  if (!object.isArray()) return object.isStream() ? "null" : object.unparseResolved();
  std::string result = "[ ";
  for (QPDFObjectHandle item : object.getArrayAsVector()) result += text(item) + " ";
  return result + "]";
}

std::string PDFObjectCopier::dictionaryText(QPDFObjectHandle dictionary) {
  std::string result = "<< ";
  for (const auto& [key, value] : dictionary.getDictAsMap()) result += entry(key, value);
  return result + ">>";
}

}  // namespace quirn::platform
