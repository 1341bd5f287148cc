// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/protocol.h"

#include "platform/text.h"

namespace quirn::box {

std::string_view cutText(std::string_view text) {
  return platform::utf8Prefix(text, longestText);
}

void readPiece(MessageReader& message, std::vector<Setting>& settings) {
  const std::string key(message.text(longestText));
  if (settings.empty() || settings.back().key != key) settings.push_back({key, {}});
  settings.back().value += message.text(longestPiece);
}

void write(MessageWriter& message, const InputFile& input) {
  const ContentType& type = input.contentType;
  message.text(input.url.native()).text(type.isKnown() ? type.mimeType() : "");
  message.number(input.size).number(input.isDirectory);
}

InputFile readInputFile(MessageReader& message, const TypeOf& typeOf) {
  const std::filesystem::path url = std::string(message.text());
  const std::string_view type = message.text();
  InputFile input{
      .id = platform::Uuid::random(),
      .url = url,
      .contentType = type.empty() ? ContentType::foundBy([=] { return typeOf(url); }) : ContentType(std::string(type)),
      .bookmark = std::nullopt};
  input.size = message.number();
  input.isDirectory = message.number(1) == 1;
  return input;
}

void write(MessageWriter& message, StagedFolder::Date date) {
  message.number(date.has_value()).number(date ? date->time_since_epoch().count() : 0);
}

StagedFolder::Date readDate(MessageReader& message) {
  const bool isKnown = message.number(1) == 1;
  const std::chrono::sys_seconds date{std::chrono::seconds(message.number())};
  return isKnown ? StagedFolder::Date(date) : std::nullopt;
}

void write(MessageWriter& message, const OperationError& error) {
  message.choice(error.kind()).text(cutText(error.subject())).text(cutText(error.underlying()));
}

OperationError readError(MessageReader& message) {
  const auto kind = message.choice<OperationError::Kind>();
  const std::string subject(message.text(longestText));
  return OperationError::restored(kind, subject, std::string(message.text(longestText)));
}

}  // namespace quirn::box
