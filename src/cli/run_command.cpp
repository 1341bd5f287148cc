// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/run_command.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "cli/console.h"
#include "cli/interrupts.h"
#include "cli/lookup.h"
#include "cli/progress_line.h"
#include "core/local_context.h"
#include "core/reflection.h"
#include "core/runner.h"
#include "platform/json.h"
#include "platform/main_queue.h"

namespace quirn::cli {
namespace {

using platform::JsonArray;
using platform::JsonObject;

constexpr std::chrono::milliseconds redrawInterval{100};

void apply(const std::vector<std::string>& settings, const OperationType& type, OperationConfig& config) {
  const Panel panel = type.configPanel(config);
  for (const std::string& setting : settings) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos) throw UsageError(fmt::format("“--set {}” has no “=”: write KEY=VALUE.", setting));
    try {
      panel.set(config, std::string_view(setting).substr(0, equals), std::string_view(setting).substr(equals + 1));
    } catch (const SettingError& error) {
      throw UsageError(error.what());
    }
  }
}

std::unique_ptr<OperationConfig> settingsOf(const OperationType& type, const std::vector<std::string>& settings) {
  auto config = type.isConfigurable() ? type.defaultConfig() : std::make_unique<OperationConfig>();
  apply(settings, type, *config);
  return config;
}

// Whether a setting that the person leaves alone is to be what the inputs say.
bool asksInputs(const OperationType& type, const std::vector<std::string>& settings) {
  const std::vector<Control> controls = type.defaultPanel().controls();
  return std::ranges::any_of(controls, [&](const Control& control) {
    return control.isFromInput && std::ranges::none_of(settings, [&](const std::string& setting) {
             return setting.starts_with(control.key + "=");
           });
  });
}

// The inputs of the run. A file that isn't there spoils what is made of all of them; where each is
// processed by itself, it is a failure among the others.
Intake inputsFor(const OperationType& type, const std::vector<std::filesystem::path>& files) {
  Intake intake = takeIn(files);
  if (!intake.unreadable.empty() && (!type.isPerFile() || intake.files.empty())) {
    throw OperationError::readFailed(intake.unreadable.front().fileName, "No such file, or not a regular one.");
  }
  if (!type.canRun(intake.files)) {
    throw OperationError::unsupportedInput(fmt::format("{} can’t run on these files.", type.info().displayName));
  }
  return intake;
}

class RunCommand {
 public:
  RunCommand(const OperationType& type, const RunArguments& arguments)
      : type_(type), arguments_(arguments), config_(settingsOf(type, arguments.settings)) {}

  int run() {
    if (!type_.isBuilt()) return reportUnbuilt();
    try {
      box::Box::shared().prepare(type_, std::ssize(arguments_.files));
      Intake intake = inputsFor(type_, arguments_.files);
      const OperationResult result = resultOn(std::move(intake.files));
      return report(withUnreadable(result, std::move(intake.unreadable)));
    } catch (const OperationError& error) {
      return reportError(error, ExitStatus::failed);
    } catch (const CancellationError&) {
      reportError(OperationError::cancelled(), ExitStatus::interrupted);
      constexpr int signalBase = 128;  // how shells tell of a program that a signal ended
      return signalBase + interrupts_.received().value_or(SIGINT);
    } catch (const OutputLost&) {
      throw;
    } catch (const std::exception& fault) {
      return reportError(OperationError::engineFailed("the run", fault.what()), ExitStatus::failed);
    }
  }

 private:
  OperationResult resultOn(std::vector<InputFile> inputs) {
    context_ = std::make_shared<LocalContext>(std::ssize(inputs), arguments_.out);
    platform::PlainMainQueue queue;
    const OperationRunner runner(queue);
    ProgressLine line(isErrorTerminal() && !arguments_.quiet ? ProgressLine::Visibility::shown
                                                             : ProgressLine::Visibility::hidden);
    const auto waitFor = [&](OperationContext& context, const std::function<bool()>& hasEnded) {
      queue.runUntil(hasEnded, redrawInterval, [&] {
        if (interrupts_.poll()) context.progress().cancel();
        line.redraw(context);
      });
    };
    if (asksInputs(type_, arguments_.settings)) readSettings(runner, inputs, waitFor);
    std::optional<RunOutcome> outcome;
    const auto completion = [&outcome](const RunOutcome& ended) { outcome = ended; };
    const Run run = type_.isConfigurable()
                        ? runner.runConfigured(type_, std::move(inputs), *config_, context_, completion)
                        : runner.run(type_, std::move(inputs), context_, completion);
    waitFor(*context_, [&outcome] { return outcome.has_value(); });
    return outcome->result();
  }

  void readSettings(const OperationRunner& runner, const std::vector<InputFile>& inputs, const auto& waitFor) {
    const auto context = std::make_shared<LocalContext>(std::ssize(inputs), std::nullopt);
    std::optional<std::unique_ptr<OperationConfig>> config;
    const Run reading = runner.configure(type_, inputs, context,
                                         [&](std::unique_ptr<OperationConfig> read) { config = std::move(read); });
    waitFor(*context, [&config] { return config.has_value(); });
    // Settings may have been read all the same.
    context->checkCancellation();
    if (*config == nullptr) throw CancellationError();
    config_ = std::move(*config);
    apply(arguments_.settings, type_, *config_);
  }

  int report(const OperationResult& result) const {
    if (arguments_.json) {
      printLine(platform::JsonValue(asJson(result)).text());
    } else {
      std::vector<std::string> paths;
      for (const OutputFile& output : result.outputs) paths.push_back(output.url.native());
      printLines(paths);
    }
    for (const FileFailure& failure : result.failures) {
      say(fmt::format("{}: {}", failure.fileName, failure.message), Tone::bad);
    }
    if (result.summary) say(*result.summary);
    return static_cast<int>(result.failures.empty() ? ExitStatus::done : ExitStatus::failed);
  }

  JsonObject asJson(const OperationResult& result) const {
    JsonArray outputs;
    for (const OutputFile& output : result.outputs) {
      outputs.emplace_back(JsonObject{{"path", output.url.native()}, {"role", enumeratorName(output.role)}});
    }
    JsonArray failures;
    for (const FileFailure& failure : result.failures) {
      failures.emplace_back(JsonObject{{"fileName", failure.fileName}, {"message", failure.message}});
    }
    return {{"operation", type_.info().operationID},
            {"outputs", std::move(outputs)},
            {"summary", result.summary ? platform::JsonValue(*result.summary) : nullptr},
            {"status", context_->currentStatus()},
            {"failures", std::move(failures)}};
  }

  int reportUnbuilt() const {
    const std::string message = fmt::format("{} isn’t built yet.", type_.info().displayName);
    printError("unbuilt", message);
    say(message, Tone::bad);
    return static_cast<int>(ExitStatus::failed);
  }

  int reportError(const OperationError& error, ExitStatus status) const {
    printError(enumeratorName(error.kind()), error.userMessage());
    say(error.userMessage(), Tone::bad);
    if (arguments_.verbose && !error.underlying().empty()) say(error.underlying());
    return static_cast<int>(status);
  }

  void printError(std::string_view kind, const std::string& message) const {
    if (!arguments_.json) return;
    const JsonObject details{{"kind", kind}, {"message", message}};
    const JsonObject object{{"operation", type_.info().operationID}, {"error", details}};
    printLine(platform::JsonValue(object).text());
  }

  const OperationType& type_;
  const RunArguments& arguments_;
  std::unique_ptr<OperationConfig> config_;
  Interrupts interrupts_;
  std::shared_ptr<LocalContext> context_;
};

}  // namespace

int runCommand(const OperationRegistry& registry, const RunArguments& arguments) {
  return RunCommand(operationNamed(registry, arguments.operation), arguments).run();
}

}  // namespace quirn::cli
