// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_page_content.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QUtil.hh>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/pdf_content_scanner.h"
#include "platform/pdf_internal.h"

namespace quirn::platform {
namespace {

// The end of a pipeline that keeps the first bytes.
class BoundedBuffer final : public Pipeline {
 public:
  explicit BoundedBuffer(std::size_t mostBytes) : Pipeline("buffer", nullptr), mostBytes_(mostBytes) {}

  void write(const unsigned char* bytes, std::size_t count) override {
    if (count > mostBytes_ - bytes_.size()) throw std::length_error("stream");
    bytes_.append(reinterpret_cast<const char*>(bytes), count);
  }
  void finish() override {}
  std::string take() { return std::move(bytes_); }

 private:
  std::size_t mostBytes_;
  std::string bytes_;
};

bool canDecode(QPDFObjectHandle stream) {
  bool isFiltered = false;
  stream.pipeStreamData(nullptr, &isFiltered, 0, qpdf_dl_specialized, true);
  return isFiltered;
}

// Joins streams when the document is written, so that their content isn't held until then.
class JoinedStreams final : public QPDFObjectHandle::StreamDataProvider {
 public:
  explicit JoinedStreams(std::vector<QPDFObjectHandle> streams)
      : StreamDataProvider(false), streams_(std::move(streams)) {}

  void provideStreamData(const QPDFObjGen&, Pipeline* pipeline) override {
    Pl_Flate deflate("joined", pipeline, Pl_Flate::a_deflate);
    for (QPDFObjectHandle& stream : streams_) {
      deflate.writeString(decodedStream(stream));
      // A token doesn't go on in the next stream.
      deflate.writeCStr("\n");
    }
    deflate.finish();
  }

 private:
  std::vector<QPDFObjectHandle> streams_;
};

// Without the keys that belong to the place where the stream stood.
QPDFObjectHandle withDataOf(QPDFObjectHandle stream) {
  QPDFObjectHandle copy = stream.copyStream();
  QPDFObjectHandle dictionary = copy.getDict();
  for (const std::string& key : dictionary.getKeys()) {
    if (key != "/Filter" && key != "/DecodeParms" && key != "/Length") dictionary.removeKey(key);
  }
  return copy;
}

QPDFObjectHandle joined(QPDF& document, const std::vector<QPDFObjectHandle>& streams) {
  if (streams.size() == 1) return withDataOf(streams.front());
  QPDFObjectHandle stream = document.newStream();
  stream.replaceStreamData(std::make_shared<JoinedStreams>(streams), QPDFObjectHandle::newName("/FlateDecode"),
                           QPDFObjectHandle::newNull());
  return stream;
}

// A page is an isolated group whether or not its dictionary says so (ISO 32000-1, 11.4.7).
QPDFObjectHandle isolatedGroup(QPDFObjectHandle group) {
  QPDFObjectHandle copy = group.shallowCopy();
  copy.replaceKey("/I", QPDFObjectHandle::newBool(true));
  return copy;
}

std::string repeated(std::string_view text, long count) {
  std::string all;
  for (long i = 0; i < count; ++i) all += text;
  return all;
}

// The page's content as one form that the page draws, for content that nothing can be appended to.
void wrapInForm(QPDF& document, QPDFObjectHandle page) {
  // Content is cut to the page's boxes already.
  constexpr double everywhere = 1'000'000;
  QPDFObjectHandle form = formOfPage(document, page, {-everywhere, -everywhere, everywhere, everywhere});
  QPDFObjectHandle objects = QPDFObjectHandle::newDictionary();
  objects.replaceKey("/Page", form);
  QPDFObjectHandle resources = QPDFObjectHandle::newDictionary();
  resources.replaceKey("/XObject", objects);
  page.replaceKey("/Resources", resources);
  page.replaceKey("/Contents", QPDFObjectHandle::newArray({document.newStream("/Page Do\n")}));
}

// Puts the page's content between q and Q, with as many more of them as the content leaves unmatched.
void isolateContents(QPDF& document, QPDFObjectHandle page) {
  const PDFContentBalance balance = balanceOf(decodedContents(page));
  constexpr long mostUnmatched = 100;
  if (balance.endsInside || balance.unmatchedRestores > mostUnmatched || balance.unmatchedSaves > mostUnmatched) {
    wrapInForm(document, page);
    return;
  }
  std::vector<QPDFObjectHandle> streams = contentStreams(page);
  streams.insert(streams.begin(), document.newStream(repeated("q\n", balance.unmatchedRestores + 1)));
  streams.push_back(document.newStream(repeated("\nQ", balance.unmatchedSaves + 1) + "\n"));
  page.replaceKey("/Contents", QPDFObjectHandle::newArray(streams));
}

// The page's own copy of its resources, as deep as its dictionary of objects.
QPDFObjectHandle ownObjects(QPDF& document, QPDFObjectHandle page) {
  QPDFObjectHandle resources = sharedResources(document, page).shallowCopy();
  QPDFObjectHandle objects = resources.getKey("/XObject");
  QPDFObjectHandle own = objects.isDictionary() ? objects.shallowCopy() : QPDFObjectHandle::newDictionary();
  resources.replaceKey("/XObject", own);
  page.replaceKey("/Resources", resources);
  return own;
}

}  // namespace

std::string contentNumber(double value) {
  constexpr double largest = 1e9;
  return QUtil::double_to_string(std::isfinite(value) ? std::clamp(value, -largest, largest) : 0, 5, true);
}

std::string concatenation(const PDFMatrix& matrix) {
  std::string text;
  // Scales want more digits than places do.
  for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d})
    text += QUtil::double_to_string(value, 8, true) + ' ';
  return text + contentNumber(matrix.e) + ' ' + contentNumber(matrix.f) + " cm\n";
}

std::string drawing(const std::string& name, const PDFMatrix& matrix) {
  return "q\n" + concatenation(matrix) + name + " Do\nQ\n";
}

std::string rectanglePath(const PDFRectangle& rectangle) {
  return contentNumber(rectangle.left) + ' ' + contentNumber(rectangle.bottom) + ' ' +
         contentNumber(rectangle.width()) + ' ' + contentNumber(rectangle.height()) + " re\n";
}

QPDFObjectHandle arrayOf(const PDFRectangle& rectangle) {
  return QPDFObjectHandle::newArray(
      QPDFObjectHandle::Rectangle(rectangle.left, rectangle.bottom, rectangle.right, rectangle.top));
}

QPDFObjectHandle arrayOf(const PDFMatrix& matrix) {
  return QPDFObjectHandle::newArray(
      QPDFObjectHandle::Matrix(matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f));
}

PDFMatrix matrixOf(QPDFObjectHandle object) {
  if (!object.isArray() || object.getArrayNItems() != 6) return {};
  std::array<double, 6> n{};
  for (int i = 0; i < 6; ++i) {
    if (!object.getArrayItem(i).getValueAsNumber(n.at(static_cast<std::size_t>(i)))) return {};
  }
  return {n[0], n[1], n[2], n[3], n[4], n[5]};
}

std::string decodedStream(QPDFObjectHandle stream, std::size_t mostBytes) {
  if (!canDecode(stream)) return {};
  BoundedBuffer buffer(mostBytes);
  try {
    stream.pipeStreamData(&buffer, nullptr, 0, qpdf_dl_specialized, true);
  } catch (const std::length_error&) {
    // What came until then is a beginning, as it is for a stream that breaks off.
    return buffer.take();
  }
  return buffer.take();
}

std::optional<std::string> wholeDecodedStream(QPDFObjectHandle stream, std::size_t mostBytes) {
  if (!canDecode(stream)) return std::nullopt;
  BoundedBuffer buffer(mostBytes);
  try {
    if (!stream.pipeStreamData(&buffer, nullptr, 0, qpdf_dl_specialized, true)) return std::nullopt;
  } catch (const std::length_error&) {
    return std::nullopt;
  }
  return buffer.take();
}

std::vector<QPDFObjectHandle> contentStreams(QPDFObjectHandle page) {
  QPDFObjectHandle contents = page.getKey("/Contents");
  if (contents.isStream()) return {contents};
  std::vector<QPDFObjectHandle> streams;
  if (!contents.isArray()) return streams;
  for (QPDFObjectHandle item : contents.getArrayAsVector()) {
    if (item.isStream()) streams.push_back(item);
  }
  return streams;
}

QPDFObjectHandle sharedResources(QPDF& document, const QPDFObjectHandle& page) {
  std::set<QPDFObjGen> seen;
  for (QPDFObjectHandle node = page; node.isDictionary() && seen.insert(node.getObjGen()).second;
       node = node.getKey("/Parent")) {
    QPDFObjectHandle resources = node.getKey("/Resources");
    if (!resources.isDictionary()) continue;
    if (resources.isIndirect()) return resources;
    return node.replaceKeyAndGetNew("/Resources", document.makeIndirectObject(resources));
  }
  return QPDFObjectHandle::newDictionary();
}

std::string decodedContents(QPDFObjectHandle page) {
  std::string content;
  for (const QPDFObjectHandle& stream : contentStreams(page)) {
    content += decodedStream(stream, mostContentRead - std::min(content.size(), mostContentRead));
    content += '\n';
  }
  return content;
}

QPDFObjectHandle formOfPage(QPDF& document, QPDFObjectHandle page, const PDFRectangle& box) {
  QPDFObjectHandle form = joined(document, contentStreams(page));
  QPDFObjectHandle dictionary = form.getDict();
  dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
  dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  dictionary.replaceKey("/BBox", arrayOf(box));
  dictionary.replaceKey("/Resources", sharedResources(document, page));
  QPDFObjectHandle group = page.getKey("/Group");
  if (group.isDictionary()) dictionary.replaceKey("/Group", isolatedGroup(group));
  return form;
}

void drawOnPage(QPDF& document, QPDFObjectHandle page, const std::vector<PlacedObject>& placed) {
  if (placed.empty()) return;
  isolateContents(document, page);
  QPDFObjectHandle objects = ownObjects(document, page);
  std::string content;
  std::size_t number = 0;
  for (const PlacedObject& item : placed) {
    while (objects.hasKey(fmt::format("/Form{}", number))) ++number;
    const std::string name = fmt::format("/Form{}", number++);
    objects.replaceKey(name, item.object);
    content += drawing(name, item.matrix);
  }
  page.getKey("/Contents").appendItem(document.newStream(content));
}

}  // namespace quirn::platform
