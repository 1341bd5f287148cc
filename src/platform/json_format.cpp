// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/json_format.h"

#include "platform/json_scanner.h"
#include "platform/json_writer.h"

namespace quirn::platform {
namespace {

void writeString(JsonWriter& writer, const JsonScanner& scanner) {
  if (scanner.hasEscapes()) {
    writer.stringText(decodedJsonString(scanner.raw()));
  } else {
    writer.value(scanner.raw());
  }
}

void writeKey(JsonWriter& writer, const JsonScanner& scanner) {
  if (scanner.hasEscapes()) {
    writer.keyText(decodedJsonString(scanner.raw()));
  } else {
    writer.key(scanner.raw());
  }
}

void write(JsonWriter& writer, JsonToken token, const JsonScanner& scanner) {
  switch (token) {
    case JsonToken::beginObject:
    case JsonToken::beginArray: writer.open(scanner.raw().front()); break;
    case JsonToken::endObject:
    case JsonToken::endArray: writer.close(scanner.raw().front()); break;
    case JsonToken::key: writeKey(writer, scanner); break;
    case JsonToken::string: writeString(writer, scanner); break;
    default: writer.value(scanner.raw());
  }
}

}  // namespace

std::string formattedJson(std::string_view text, JsonLayout layout, std::size_t limit) {
  std::string out;
  // Pages that are reserved and stay unused cost nothing; growing would hold the text twice.
  out.reserve(layout == JsonLayout::pretty ? 2 * text.size() : text.size());
  JsonScanner scanner(text);
  JsonWriter writer(out, layout);
  for (JsonToken token{}; (token = scanner.next()) != JsonToken::end;) {
    write(writer, token, scanner);
    if (writer.size() > limit) throw JsonError(JsonError::Reason::outputTooLarge, scanner.offset());
  }
  writer.finish();
  return out;
}

}  // namespace quirn::platform
