// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/boxed_folder.h"

#include <system_error>

#include "core/operation_error.h"

namespace quirn::box {
namespace {

constexpr std::size_t longestInMessage = 64 << 10;  // bytes of a file

}  // namespace

BoxedFolder::~BoxedFolder() {
  if (!isPublished_) context_.note(message(Ask::discardFolder));
}

MessageWriter BoxedFolder::message(Ask kind) const {
  return std::move(MessageWriter().choice(kind).number(number_));
}

void BoxedFolder::makeFolder(std::string_view name) {
  file_ = {};
  context_.note(message(Ask::makeFolder).text(name));
}

int BoxedFolder::begin(std::string_view name, Date modified) {
  file_ = {};
  MessageWriter question = message(Ask::beginFile).text(name);
  box::write(question, modified);
  file_ = context_.ask(question, Tell::opened).takeDescriptor();
  return file_.number();
}

void BoxedFolder::write(std::string_view name, std::span<const std::byte> bytes, Date modified) {
  if (bytes.size() <= longestInMessage) {
    file_ = {};
    MessageWriter whole = message(Ask::writeFile).text(name);
    box::write(whole, modified);
    return context_.note(whole.text({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
  }
  const int file = begin(name, modified);
  try {
    platform::writeAll(file, bytes);
  } catch (const std::system_error& error) {
    abandonFile();
    throw OperationError::writeFailed(url_ / name, error.what());
  }
  file_ = {};
}

void BoxedFolder::abandonFile() {
  file_ = {};
  context_.note(message(Ask::abandonFile));
}

bool BoxedFolder::link(std::string_view name, std::string_view target) {
  file_ = {};
  return context_.ask(message(Ask::link).text(name).text(target), Tell::linked).reader().number(1) == 1;
}

void BoxedFolder::settle() {
  file_ = {};
  context_.ask(message(Ask::settle), Tell::done);
}

OutputFile BoxedFolder::publish(OutputRole role) {
  file_ = {};
  isPublished_ = true;
  return context_.publishFolder(number_, role);
}

}  // namespace quirn::box
