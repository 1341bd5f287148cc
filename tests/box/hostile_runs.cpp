// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "box/hostile_runs.h"

#include <fmt/format.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <thread>

#include "core/reflection.h"
#include "core/runner.h"
#include "support/temporary_folder.h"

namespace quirn::box {
namespace fs = std::filesystem;
using tests::contentOf;
namespace {

std::string errorOf(const RunOutcome& outcome) {
  try {
    outcome.result();
    return {};
  } catch (const OperationError& error) {
    return fmt::format("{}: {} [{}]", enumeratorName(error.kind()), error.userMessage(), error.underlying());
  } catch (const CancellationError&) {
    return "cancelled";
  } catch (const std::exception& fault) {
    return std::string("fault: ") + fault.what();
  }
}

}  // namespace

HostileFolder::HostileFolder() : path_(fs::temp_directory_path() / ("quirn-box-" + platform::Uuid::random().text())) {
  fs::create_directories(path_);
}

HostileFolder::~HostileFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

InputFile HostileFolder::input(const fs::path& name, std::string_view content) const {
  fs::create_directories((path_ / name).parent_path());
  std::ofstream(path_ / name, std::ios::binary) << content;
  return takeIn(std::vector{path_ / name}).files.at(0);
}

InputFile HostileFolder::folder(const fs::path& name) const {
  fs::create_directories(path_ / name);
  return takeIn(std::vector{path_ / name}).files.at(0);
}

std::map<std::string, std::string> HostileFolder::snapshot() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(path_)) {
    if (entry.is_regular_file()) files[entry.path().lexically_relative(path_).string()] = contentOf(entry.path());
  }
  return files;
}

fs::path hostileProgram() {
  return QUIRN_HOSTILE_PROGRAM;
}

fs::path builtProgram() {
  return QUIRN_PROGRAM;
}

BoxLimits testLimits() {
  BoxLimits limits;
  limits.memory = 256 << 20;
  limits.output = 8 << 20;
  limits.silence = std::chrono::seconds(5);
  limits.messages = 2000;
  limits.stopping = std::chrono::milliseconds(300);
  return limits;
}

Box& testBox() {
  static Box box(hostileProgram(), testLimits());
  return box;
}

std::string describe(const Ran& ran) {
  return fmt::format("{} outputs, summary “{}”, error “{}”, progress {}, status “{}”", ran.outputs.size(), ran.summary,
                     ran.error, ran.progress, ran.status);
}

Ran runIn(Box& box, const OperationType& type, const std::vector<InputFile>& inputs,
          const std::shared_ptr<OperationContext>& context, const OperationConfig* config) {
  platform::PlainMainQueue queue;
  const OperationRunner runner(queue, box);
  std::optional<RunOutcome> outcome;
  const auto completion = [&outcome](const RunOutcome& ended) { outcome = ended; };
  const Run run = config == nullptr ? runner.run(type, inputs, context, completion)
                                    : runner.runConfigured(type, inputs, *config, context, completion);
  queue.runUntil([&] { return outcome.has_value(); }, std::chrono::milliseconds(100), [] {});
  Ran ran{
      .error = errorOf(*outcome),
      .progress = fmt::format("{}/{}", context->progress().completedUnitCount(), context->progress().totalUnitCount()),
      .status = context->currentStatus()};
  if (!ran.error.empty()) return ran;
  for (const OutputFile& output : outcome->result().outputs)
    ran.outputs[output.url.filename().string()] = fs::is_directory(output.url) ? "a folder" : contentOf(output.url);
  for (const FileFailure& failure : outcome->result().failures) ran.failures[failure.fileName] = failure.message;
  ran.summary = outcome->result().summary.value_or("");
  return ran;
}

Ran runIn(Box& box, const OperationType& type, const std::vector<InputFile>& inputs) {
  return runIn(box, type, inputs, std::make_shared<LocalContext>(std::ssize(inputs), std::nullopt));
}

bool isAlive(int process) {
  const std::string status = contentOf(fmt::format("/proc/{}/stat", process));
  const std::size_t name = status.rfind(')');
  return name != std::string::npos && status.at(name + 2) != 'Z';
}

std::vector<int> childrenOf(int process) {
  std::vector<int> children;
  for (const auto& task : fs::directory_iterator(fmt::format("/proc/{}/task", process))) {
    std::istringstream numbers(contentOf(task.path() / "children"));
    children.insert(children.end(), std::istream_iterator<int>(numbers), {});
  }
  return children;
}

bool soon(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace quirn::box
