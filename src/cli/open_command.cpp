// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/open_command.h"

#include <chrono>
#include <memory>
#include <system_error>
#include <thread>

#include "cli/exit_status.h"
#include "cli/lookup.h"
#include "platform/module.h"
#include "shell/window_start.h"

namespace quirn::cli {
namespace {

using platform::SingleInstance;

struct Place {
  std::unique_ptr<SingleInstance> instance;  // null where none can be had
  bool isHandedOver = false;
};

// The instance that is there may be starting or about to end, so it is asked for a while.
Place placeFor(const WindowRequest& request) {
  constexpr int mostAttempts = 100;
  const std::filesystem::path folder = platform::runtimeFolder();
  const std::string name = windowInstanceName();
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    if (auto instance = SingleInstance::claim(folder, name)) return {std::move(instance)};
    if (SingleInstance::handOver(folder, name, request.encoded())) return {nullptr, true};
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return {};
}

}  // namespace

int openCommand(OperationRegistry& registry, const OpenArguments& arguments) {
  if (!hasDisplay()) throw UsageError("There is no display to open the window on. See “quirn --help” for commands.");
  if (!arguments.operation.empty()) operationNamed(registry, arguments.operation);
  WindowStart start{.registry = registry, .request = windowRequest(arguments.locations, arguments.operation)};
  Place place;
  try {
    place = placeFor(start.request);
  } catch (const std::system_error&) {
    // No folder for the socket: the window opens all the same, and knows of no other.
  }
  if (place.isHandedOver) return static_cast<int>(ExitStatus::done);
  start.instance = place.instance.get();
  const auto openWindow = reinterpret_cast<OpenWindow>(platform::moduleFunction("window", openWindowName));
  return openWindow(start);
}

}  // namespace quirn::cli
