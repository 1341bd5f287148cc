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

Attempt::Attempt(platform::WorkerProcess& worker, const Request& request, const BoxLimits& limits, std::uint32_t serial)
    : worker_(worker),
      request_(request),
      limits_(limits),
      serial_(serial),
      grant_(request.type, request.inputs, request.context, limits) {}

void Attempt::serve() {
  const std::stop_callback stopping(request_.context.stopToken(), [this] { worker_.tell(serial_); });
  try {
    limitWorker();
    begin();
    while (!grant_.hasEnded()) {
      takeNext();
      if (Clock::now() - lastLook_ >= lookInterval) watch();
    }
  } catch (const DamagedMessage&) {
    throw WorkerLost(WorkerLost::How::misbehaved);
  } catch (const OutsideGrant&) {
    throw WorkerLost(WorkerLost::How::misbehaved);
  }
}

void Attempt::begin() {
  const OperationType& type = request_.type;
  const auto& folder = request_.context.outputDirectory();
  const auto defaults = type.isConfigurable() ? type.defaultConfig() : std::make_unique<OperationConfig>();
  const OperationConfig& config = request_.config != nullptr ? *request_.config : *defaults;
  std::vector<MessageWriter> settings;
  for (const Control& control : type.configPanel(config).controls())
    std::ranges::move(messagesOf(Tell::setting, {control.key, control.read(config)}), std::back_inserter(settings));
  MessageWriter messages;
  messages.choice(Tell::begin)
      .number(serial_)
      .number(type.isPerFile())
      .number(request_.wanted == Request::Wanted::configuration)
      .text(type.info().operationID)
      .text(folder ? folder->native() : "")
      .number(grant_.total())
      .number(std::ssize(request_.inputs))
      .number(std::ssize(settings));
  const std::optional<InputHandle> opened = openAhead();
  int descriptor = opened ? opened->descriptor() : -1;
  const auto add = [&](const MessageWriter& message) {
    if (messages.bytes().size() + message.bytes().size() > platform::longestMessage)
      send(std::exchange(messages, {}), std::exchange(descriptor, -1));
    messages.append(message);
  };
  for (const InputFile& input : request_.inputs) {
    MessageWriter message;
    write(message.choice(Tell::input), input);
    add(message);
  }
  for (const MessageWriter& setting : settings) add(setting);
  send(messages, descriptor);
}

// An operation on one file opens it; one that can't be opened is left for the worker to ask for, and to be told why.
std::optional<InputHandle> Attempt::openAhead() const {
  if (!request_.type.isPerFile()) return std::nullopt;
  try {
    return request_.context.open(request_.inputs.front());
  } catch (const OperationError&) {
    return std::nullopt;
  }
}

void Attempt::send(const MessageWriter& message, int descriptor) {
  // A worker that is told something waits for it.
  const auto patience = std::min<std::chrono::milliseconds>(limits_.silence, 5s);
  if (!worker_.messages().send(message.bytes(), descriptor, patience)) throw WorkerLost(WorkerLost::How::died);
}

void Attempt::takeNext() {
  if (!worker_.messages().waitForMessage(lookInterval)) return;
  std::optional<MessageSocket::Message> message;
  try {
    message = worker_.messages().receive(MessageSocket::Descriptors::refused);
  } catch (const std::system_error&) {
    throw WorkerLost(WorkerLost::How::misbehaved);
  }
  if (!message) throw WorkerLost(WorkerLost::How::died);
  grant_.take(message->bytes, [this](const MessageWriter& reply, int descriptor) { send(reply, descriptor); });
  if (grant_.outputLimit() != outputLimit_) limitWorker();
}

void Attempt::limitWorker() {
  outputLimit_ = grant_.outputLimit();
  worker_.limit({limits_.memory, outputLimit_, limits_.processorTime});
}

void Attempt::watch() {
  const Clock::time_point now = Clock::now();
  const auto passed = std::min<Clock::duration>(now - lastLook_, longestInterval);
  lastLook_ = now;
  worker_.tell(howFar);
  grant_.checkOutputs();
  const std::int64_t sign = grant_.signOfLife();
  silentFor_ = sign == lastSign_ ? silentFor_ + passed : Clock::duration();
  lastSign_ = sign;
  if (request_.context.stopToken().stop_requested()) stoppingFor_ += passed;
  const auto hundredSeconds = std::chrono::duration_cast<std::chrono::seconds>(now - began_).count() / 100;
  // Each input may be opened, and once more.
  const std::int64_t mostMessages = limits_.messages * (1 + hundredSeconds) + 4 * grant_.inputCount();
  if (grant_.messageCount() > mostMessages) throw WorkerLost(WorkerLost::How::misbehaved);
  if (silentFor_ > limits_.silence) throw WorkerLost(WorkerLost::How::silent);
  if (stoppingFor_ > limits_.stopping) throw WorkerLost(WorkerLost::How::slowToStop);
}

}  // namespace quirn::box
