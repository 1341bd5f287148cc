// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/boxed_output.h"

#include <utility>

#include "core/output_name.h"

namespace quirn::box {
namespace {

constexpr std::size_t longestInMessage = 64 << 10;  // bytes of an output

}  // namespace

BoxedOutput::BoxedOutput(BoxedContext& context, const InputFile& beside, OutputNaming naming, Staging staging)
    : context_(context), beside_(beside), naming_(std::move(naming)) {
  if (staging == Staging::atOnce) stage();
}

BoxedOutput::~BoxedOutput() {
  if (isStaged()) context_.note(std::move(MessageWriter().choice(Ask::discard).number(number_)));
}

void BoxedOutput::stage() const {
  BoxedContext::Answer answer = context_.ask(context_.messageFor(Ask::stage, beside_, naming_), Tell::staged);
  MessageReader reader = answer.reader();
  number_ = reader.number();
  url_ = std::string(reader.text());
  descriptor_ = answer.takeDescriptor();
  const std::string content = std::exchange(content_, {});
  append(descriptor_.number(), url_, std::as_bytes(std::span(content)));
}

void BoxedOutput::write(std::span<const std::byte> bytes) {
  if (isStaged() || content_.size() + bytes.size() > longestInMessage) return StagedOutput::write(bytes);
  content_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

int BoxedOutput::descriptor() const {
  if (!isStaged()) stage();
  return descriptor_.number();
}

const std::filesystem::path& BoxedOutput::url() const {
  if (!isStaged()) stage();
  return url_;
}

OutputFile BoxedOutput::publish(OutputRole role) {
  if (!isStaged()) return publishWhole(role);
  descriptor_ = platform::FileDescriptor();
  context_.note(std::move(MessageWriter().choice(Ask::publish).number(number_).choice(role)));
  return context_.remember(number_, {platform::Uuid::random(), url_, role});
}

OutputFile BoxedOutput::publishWhole(OutputRole role) {
  const std::int64_t number = context_.nextOwnNumber();
  MessageWriter whole = context_.messageFor(Ask::publishWhole, beside_, naming_);
  context_.note(whole.number(number).choice(role).text(content_));
  const std::filesystem::path folder = context_.outputDirectory().value_or(beside_.url.parent_path());
  return context_.remember(number, {platform::Uuid::random(), folder / fileNameOf(naming_), role});
}

}  // namespace quirn::box
