// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/attempt.h"

#include <algorithm>
#include <iterator>
#include <stop_token>
#include <system_error>
#include <utility>

namespace quirn::box {
namespace {

using namespace std::chrono_literals;
using platform::MessageSocket;

constexpr auto lookInterval = 100ms;
// Where more has passed between two looks, it was this process that stood still.
constexpr auto longestInterval = 1s;

}  // namespace

Attempt::Attempt(platform::WorkerProcess& worker, const Requests& requests, const BoxLimits& limits,
                 std::uint32_t serial)
    : worker_(worker), requests_(requests), limits_(limits), serial_(serial), unserved_(requests.inputs) {
  beginGrant();
}

void Attempt::beginGrant() {
  const bool isPerFile = requests_.type.isPerFile();
  grant_.emplace(requests_.type, isPerFile ? unserved_.first(1) : unserved_, requests_.context, limits_);
  began_ = Clock::now();
  silentFor_ = {};
  lastSign_ = 0;
}

void Attempt::endGrant(const Ended& ended) {
  ended(*grant_);
  unserved_ = unserved_.subspan(requests_.type.isPerFile() ? 1 : unserved_.size());
  if (!unserved_.empty()) beginGrant();
}

void Attempt::serve(const Ended& ended) {
  const std::stop_callback stopping(requests_.context.stopToken(), [this] { worker_.tell(serial_); });
  try {
    limitWorker();
    begin();
    while (!grant_->hasEnded()) {
      takeNext(ended);
      if (Clock::now() - lastLook_ >= lookInterval) watch();
    }
  } catch (const DamagedMessage&) {
    throw WorkerLost(WorkerLost::How::misbehaved);
  } catch (const OutsideGrant&) {
    throw WorkerLost(WorkerLost::How::misbehaved);
  }
}

void Attempt::begin() {
  const OperationType& type = requests_.type;
  const auto& folder = requests_.context.outputDirectory();
  const auto defaults = type.isConfigurable() ? type.defaultConfig() : std::make_unique<OperationConfig>();
  const OperationConfig& config = requests_.config != nullptr ? *requests_.config : *defaults;
  std::vector<MessageWriter> settings;
  for (const Control& control : type.configPanel(config).controls())
    std::ranges::move(messagesOf(Tell::setting, {control.key, control.read(config)}), std::back_inserter(settings));
  MessageWriter messages;
  messages.choice(Tell::begin)
      .number(serial_)
      .number(type.isPerFile())
      .number(requests_.wanted == Requests::Wanted::configuration)
      .text(type.info().operationID)
      .text(folder ? folder->native() : "")
      .number(grant_->total())
      .number(std::ssize(requests_.inputs))
      .number(std::ssize(settings));
  // An operation on one file opens it; what can't be opened, and all behind it, is left for the worker to ask for, and
  // to be told why.
  const auto files = type.isPerFile() ? requests_.inputs : requests_.inputs.first(0);
  const std::vector<InputHandle> opened = openRun(files, requests_.context);
  std::vector<int> descriptors = descriptorsOf(opened);
  const auto add = [&](const MessageWriter& message) {
    if (messages.bytes().size() + message.bytes().size() > platform::longestMessage)
      send(std::exchange(messages, {}), std::exchange(descriptors, {}));
    messages.append(message);
  };
  for (const InputFile& input : requests_.inputs) {
    MessageWriter message;
    write(message.choice(Tell::input), input);
    add(message);
  }
  for (const MessageWriter& setting : settings) add(setting);
  send(messages, descriptors);
}

void Attempt::send(const MessageWriter& message, std::span<const int> descriptors) {
  // A worker that is told something waits for it.
  const auto patience = std::min<std::chrono::milliseconds>(limits_.silence, 5s);
  if (!worker_.messages().send(message.bytes(), descriptors, patience)) throw WorkerLost(WorkerLost::How::died);
}

void Attempt::takeNext(const Ended& ended) {
  if (!worker_.messages().waitForMessage(lookInterval)) return;
  std::optional<MessageSocket::Message> message;
  try {
    message = worker_.messages().receive(MessageSocket::Descriptors::refused);
  } catch (const std::system_error&) {
    throw WorkerLost(WorkerLost::How::misbehaved);
  }
  if (!message) throw WorkerLost(WorkerLost::How::died);
  const auto answer = [this](const MessageWriter& reply, std::span<const int> descriptors) {
    send(reply, descriptors);
  };
  for (std::string_view rest = message->bytes; !rest.empty();) {
    if (grant_->hasEnded()) throw OutsideGrant();
    rest = grant_->take(rest, answer);
    if (grant_->hasEnded()) endGrant(ended);
  }
  limitWorker();
}

// The worker may be ahead of the request that has not ended here.
void Attempt::limitWorker() {
  std::int64_t most = grant_->outputLimit();
  if (requests_.type.isPerFile())
    for (const InputFile& input : unserved_) most = std::max(most, outputLimitFor(input.size, limits_));
  worker_.limit({limits_.memory, most, limits_.processorTime});
}

void Attempt::watch() {
  const Clock::time_point now = Clock::now();
  const auto passed = std::min<Clock::duration>(now - lastLook_, longestInterval);
  lastLook_ = now;
  worker_.tell(howFar);
  grant_->checkOutputs();
  const std::int64_t sign = grant_->signOfLife();
  silentFor_ = sign == lastSign_ ? silentFor_ + passed : Clock::duration();
  lastSign_ = sign;
  if (requests_.context.stopToken().stop_requested()) stoppingFor_ += passed;
  const auto hundredSeconds = std::chrono::duration_cast<std::chrono::seconds>(now - began_).count() / 100;
  // Each input may be opened, and once more.
  const std::int64_t mostMessages = limits_.messages * (1 + hundredSeconds) + 4 * grant_->inputCount();
  if (grant_->messageCount() > mostMessages) throw WorkerLost(WorkerLost::How::misbehaved);
  if (silentFor_ > limits_.silence) throw WorkerLost(WorkerLost::How::silent);
  if (stoppingFor_ > limits_.stopping) throw WorkerLost(WorkerLost::How::slowToStop);
}

}  // namespace quirn::box
