// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/worker.h"

#include <fmt/format.h>

#include <cstdlib>
#include <exception>
#include <mutex>
#include <new>
#include <optional>
#include <span>
#include <thread>

#include "core/box/boxed_context.h"
#include "core/box/grant.h"
#include "core/box/module_operations.h"
#include "core/box/outbox.h"
#include "core/box/protocol.h"
#include "core/budgets.h"
#include "platform/lockdown.h"
#include "platform/worker_process.h"

namespace quirn::box {
namespace {

// Listens while an operation works: answers how far it is, stops it, and ends the process when the program is gone.
class Listener {
 public:
  Listener(const platform::WorkerConnection& connection, Outbox& outbox) : outbox_(outbox) {
    std::thread([this, &connection] { listen(connection); }).detach();
  }

  void attend(BoxedContext* context, std::uint32_t serial) {
    const std::scoped_lock guard(mutex_);
    context_ = context;
    serial_ = serial;
    if (context != nullptr && stopped_ == serial) stop();
  }

 private:
  void listen(const platform::WorkerConnection& connection) {
    while (const auto number = connection.hear()) {
      const std::scoped_lock guard(mutex_);
      if (*number != howFar) stopped_ = *number;
      if (context_ == nullptr) continue;
      if (*number == howFar) {
        context_->noteState();
        outbox_.send();
      }
      if (*number == serial_) stop();
    }
    std::_Exit(EXIT_SUCCESS);
  }

  void stop() {
    context_->progress().cancel();
    context_->requestStop();
  }

  Outbox& outbox_;
  std::mutex mutex_;
  // All guarded by mutex_.
  BoxedContext* context_ = nullptr;
  std::uint32_t serial_ = 0;
  std::uint32_t stopped_ = howFar;  // the last requests that were to be stopped; they may not have begun here
};

// What a worker is asked to do.
struct Work {
  std::uint32_t serial = 0;
  std::string operationID;
  bool isPerFile = false;  // each input is a request of its own
  bool isForConfiguration = false;
  std::optional<std::filesystem::path> outputDirectory;
  std::int64_t total = 1;
  std::vector<InputFile> inputs;
  std::vector<platform::FileDescriptor> opened;  // of the first inputs
  std::vector<Setting> settings;
};

class Worker {
 public:
  Worker(const OperationRegistry& own, const OperationRegistry* ofModule, const platform::WorkerConnection& connection)
      : own_(own),
        ofModule_(ofModule),
        messages_(connection.messages()),
        outbox_(messages_),
        listener_(connection, outbox_) {}

  void serve() {
    outbox_.note(std::move(MessageWriter().choice(Ask::ready)));
    outbox_.send();
    while (auto begin = messages_.receive(platform::MessageSocket::Descriptors::accepted)) {
      Work work = readWork(std::move(begin->bytes));
      work.opened = std::move(begin->descriptors);
      work.opened.resize(work.inputs.size());
      if (work.isPerFile) {
        for (std::size_t i = 0; i < work.inputs.size(); ++i)
          serve(work, std::span(&work.inputs[i], 1), std::move(work.opened[i]));
      } else {
        serve(work, work.inputs, {});
      }
      outbox_.send();
    }
  }

 private:
  void serve(const Work& work, std::span<const InputFile> inputs, platform::FileDescriptor opened) {
    const std::int64_t sentBefore = outbox_.sendCount();
    BoxedContext context(messages_, outbox_,
                         {.total = work.total,
                          .isPerFile = work.isPerFile,
                          .outputDirectory = work.outputDirectory,
                          .inputs = {inputs.begin(), inputs.end()},
                          .firstInput = std::move(opened)});
    context_ = &context;
    listener_.attend(&context, work.serial);
    const MessageWriter ending = endingOf(work, inputs, context);
    listener_.attend(nullptr, work.serial);
    context.noteState();
    context.note(ending);
    // The end of one of which the program has heard doesn't wait for the next: should that one end this process, the
    // program takes it for the first one's fault.
    if (outbox_.sendCount() != sentBefore) outbox_.send();
  }

  Work readWork(std::string bytes) const {
    MessageReader message(bytes);
    const auto take = [&](Tell expected) {
      if (message.isAtEnd()) {
        const auto next = messages_.receive(platform::MessageSocket::Descriptors::refused);
        if (!next) std::_Exit(EXIT_FAILURE);
        bytes = next->bytes;
        message = MessageReader(bytes);
      }
      if (message.choice<Tell>() != expected) throw DamagedMessage();
    };
    Work work;
    take(Tell::begin);
    work.serial = static_cast<std::uint32_t>(message.number());
    work.isPerFile = message.number(1) == 1;
    work.isForConfiguration = message.number(1) == 1;
    work.operationID = message.text();
    if (const std::string folder(message.text()); !folder.empty()) work.outputDirectory = folder;
    work.total = message.number();
    const std::int64_t inputs = message.number();
    const std::int64_t settings = message.number();
    for (std::int64_t i = 0; i < inputs; ++i) {
      take(Tell::input);
      work.inputs.push_back(readInputFile(message, typeOf_));
    }
    for (std::int64_t i = 0; i < settings; ++i) {
      take(Tell::setting);
      readPiece(message, work.settings);
    }
    return work;
  }

  const OperationType& typeOf(const Work& work) const {
    const OperationType* type = ofModule_ == nullptr ? nullptr : ofModule_->byID(work.operationID);
    if (type == nullptr) type = own_.byID(work.operationID);
    if (type == nullptr) throw std::runtime_error("there is no operation " + work.operationID);
    return *type;
  }

  static std::unique_ptr<OperationConfig> configOf(const OperationType& type, const Work& work) {
    if (!type.isConfigurable()) return std::make_unique<OperationConfig>();
    auto config = type.defaultConfig();
    const Panel panel = type.configPanel(*config);
    for (const auto& [key, value] : work.settings) panel.set(*config, key, value);
    return config;
  }

  static OperationResult run(const OperationType& type, const Work& work, std::span<const InputFile> inputs,
                             BoxedContext& context) {
    const auto config = configOf(type, work);
    if (type.isPerFile()) return {{type.processFile(inputs.front(), *config, context)}, std::nullopt, {}};
    const auto operation = type.make();
    if (const auto* configurable = dynamic_cast<const AnyConfigurableOperation*>(operation.get()))
      return configurable->runConfigured(inputs, *config, context);
    return operation->run(inputs, context);
  }

  static void tellConfiguration(const OperationType& type, std::span<const InputFile> inputs, BoxedContext& context) {
    const auto config = type.configurationFor(inputs, context);
    const Panel panel = type.configPanel(*config);
    const auto tell = [&](const auto& item) {
      for (const MessageWriter& message : messagesOf(Ask::setting, {item.key, item.read(*config)}))
        context.note(message);
    };
    for (const Fact& fact : panel.facts()) tell(fact);
    for (const Control& control : panel.controls()) {
      if (control.isFromInput) tell(control);
    }
  }

  // Runs it, tells of what there is to tell, and gives the last message.
  MessageWriter endingOf(const Work& work, std::span<const InputFile> inputs, BoxedContext& context) const {
    MessageWriter ending;
    try {
      context.checkCancellation();
      OperationResult result;
      if (work.isForConfiguration)
        tellConfiguration(typeOf(work), inputs, context);
      else
        result = run(typeOf(work), work, inputs, context);
      for (const OutputFile& output : result.outputs) context.note(context.namedIn(Ask::output, output));
      for (const FileFailure& failure : result.failures) {
        MessageWriter message;
        context.note(message.choice(Ask::failure).text(cutText(failure.fileName)).text(cutText(failure.message)));
      }
      ending.choice(Ask::finished).number(result.summary.has_value()).text(cutText(result.summary.value_or("")));
    } catch (const OperationError& error) {
      write(ending.choice(Ask::failed), error);
    } catch (const CancellationError&) {
      ending.choice(Ask::cancelled);
    } catch (const std::bad_alloc&) {
      write(ending.choice(Ask::failed), breachOf(Budget::memory, nameFor(inputs)));
    } catch (const std::exception& fault) {
      ending.choice(Ask::fault).text(cutText(fault.what()));
    } catch (...) {  // The program says what it says of every fault of ours.
      ending.choice(Ask::fault).text("");
    }
    return ending;
  }

  const OperationRegistry& own_;
  const OperationRegistry* ofModule_;
  const platform::MessageSocket& messages_;
  Outbox outbox_;
  Listener listener_;
  BoxedContext* context_ = nullptr;  // of the request that is served
  TypeOf typeOf_ = [this](const std::filesystem::path& file) { return context_->typeOf(file); };
};

}  // namespace

int runWorker(const std::string& kind, const OperationRegistry& operations) {
  const platform::WorkerConnection connection = platform::WorkerConnection::inherited();
  const OperationRegistry* const ofModule = kind == plainWorker ? nullptr : &operationsOfModule(kind);
  platform::lockDown();
  Worker(operations, ofModule, connection).serve();
  // Without destructors: a thread of a library may still be busy.
  std::_Exit(EXIT_SUCCESS);
}

}  // namespace quirn::box
