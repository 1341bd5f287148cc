// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_raw_objects.h"

#include <algorithm>
#include <charconv>

#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

// Objects that belong together stand together, but often far from those that many of them share.
constexpr std::size_t windowSize = 16 << 10;
constexpr std::size_t firstLook = 2 << 10;      // most objects end before this
constexpr std::size_t longestObject = 4 << 20;  // without the bytes of a stream
constexpr std::size_t mostContainerBytes = 32 << 20;
constexpr std::size_t largestContainer = 256 << 20;

// The numbers and offsets at the head of an object stream.
std::vector<std::pair<int, std::size_t>> readHead(std::string_view head, std::size_t first) {
  std::vector<std::pair<int, std::size_t>> objects;
  std::size_t at = 0;
  const auto number = [&]() -> std::optional<int> {
    while (at < head.size() && (head[at] < '0' || head[at] > '9')) ++at;
    int value = 0;
    const auto [end, error] = std::from_chars(head.data() + at, head.data() + head.size(), value);
    at = static_cast<std::size_t>(end - head.data());
    return error == std::errc() ? std::optional(value) : std::nullopt;
  };
  for (;;) {
    const auto name = number();
    const auto offset = number();
    if (!name || !offset) return objects;
    objects.emplace_back(*name, first + static_cast<std::size_t>(*offset));
  }
}

}  // namespace

PDFRawObjects::PDFRawObjects(QPDF& qpdf, PDFSource& source)
    : qpdf_(qpdf), source_(source), isEncrypted_(qpdf.isEncrypted()) {
  for (const auto& [name, entry] : qpdf.getXRefTable()) {
    // A number that was freed and taken again is of a later generation, and what it named before is gone (7.5.4). The
    // library keeps both.
    if (const auto before = entries_.find(name.getObj()); before != entries_.end()) {
      qpdf.replaceObject(name.getObj(), before->second.generation, QPDFObjectHandle::newNull());
    }
    const bool isContained = entry.getType() == 2;
    entries_[name.getObj()] = {.generation = name.getGen(),
                               .offset = isContained ? entry.getObjStreamIndex() : entry.getOffset(),
                               .container = isContained ? entry.getObjStreamNumber() : 0};
  }
}

std::string_view PDFRawObjects::bytes(std::int64_t offset, std::size_t length) {
  const std::int64_t end = windowStart_ + std::ssize(window_);
  if (offset < windowStart_ || offset + static_cast<std::int64_t>(length) > end) {
    window_.resize(std::max(windowSize, length));
    window_.resize(source_.readAt(offset, window_.data(), window_.size()));
    windowStart_ = offset;
  }
  return std::string_view(window_).substr(static_cast<std::size_t>(offset - windowStart_), length);
}

std::optional<ScannedObject> PDFRawObjects::scan(PDFReference reference, const PDFRewriting& rewriting,
                                                 std::string& text) {
  const auto found = entries_.find(reference.number);
  if (isEncrypted_ || found == entries_.end() || found->second.generation != reference.generation) return std::nullopt;
  const Entry& entry = found->second;
  return entry.container == 0 ? scanInFile(reference, entry.offset, rewriting, text)
                              : scanInContainer(reference, entry, rewriting, text);
}

std::optional<std::string> PDFRawObjects::textOf(PDFReference reference) {
  static const PDFRewriting asItIs{.numberOf = [](PDFReference named) { return named.number; },
                                   .integerAt = [](PDFReference) { return std::nullopt; },
                                   .stringText = {}};
  std::string text;
  const auto object = scan(reference, asItIs, text);
  return object && !object->isStream ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<ScannedObject> PDFRawObjects::scanInFile(PDFReference reference, std::int64_t offset,
                                                       const PDFRewriting& rewriting, std::string& text) {
  const std::size_t begin = text.size();
  ScannedObject object{.end = ScannedObject::End::cut};
  for (std::size_t look = firstLook; object.end == ScannedObject::End::cut && look <= longestObject; look *= 8) {
    // A copy of the view: looking for a length elsewhere may move the window.
    const std::string piece(bytes(offset, look));
    object = scanNumberedObject(piece, rewriting, text);
  }
  const auto refuse = [&]() -> std::optional<ScannedObject> {
    text.resize(begin);
    return std::nullopt;
  };
  if (object.end != ScannedObject::End::complete || object.name != reference) return refuse();
  if (!object.isStream) return object;
  object.dataOffset += static_cast<std::size_t>(offset);
  constexpr std::size_t endLook = 16;
  std::int64_t end = 0;
  if (__builtin_add_overflow(static_cast<std::int64_t>(object.dataOffset), object.dataLength, &end)) return refuse();
  std::string_view behind = bytes(end, endLook);
  behind.remove_prefix(std::min(behind.find_first_not_of("\r\n "), behind.size()));
  return behind.starts_with("endstream") ? std::optional(object) : refuse();
}

std::optional<ScannedObject> PDFRawObjects::scanInContainer(PDFReference reference, const Entry& entry,
                                                            const PDFRewriting& rewriting, std::string& text) {
  const Container& container = containerOf(entry.container);
  const auto index = static_cast<std::size_t>(entry.offset);
  if (index >= container.objects.size()) return std::nullopt;
  const auto [number, offset] = container.objects[index];
  const std::size_t next =
      index + 1 < container.objects.size() ? container.objects[index + 1].second : container.data.size();
  if (number != reference.number || offset > next || next > container.data.size()) return std::nullopt;
  const ScannedObject object =
      scanBareObject(std::string_view(container.data).substr(offset, next - offset), rewriting, text);
  return object.end == ScannedObject::End::complete ? std::optional(object) : std::nullopt;
}

const PDFRawObjects::Container& PDFRawObjects::containerOf(int number) {
  const auto found = containers_.find(number);
  if (found != containers_.end()) return found->second;
  if (containerBytes_ > mostContainerBytes) {
    containers_.clear();
    containerBytes_ = 0;
  }
  Container& container = containers_[number] = readContainer(number);
  containerBytes_ += container.data.size();
  return container;
}

PDFRawObjects::Container PDFRawObjects::readContainer(int number) {
  QPDFObjectHandle stream = qpdf_.getObject(number, 0);
  int first = 0;
  if (!stream.isStream() || !stream.getDict().getKey("/First").getValueAsInt(first) || first < 0) return {};
  auto data = wholeDecodedStream(stream, largestContainer);
  if (!data) return {};
  Container container{.data = std::move(*data)};
  const auto head = static_cast<std::size_t>(first);
  container.objects = readHead(std::string_view(container.data).substr(0, head), head);
  return container;
}

}  // namespace quirn::platform
