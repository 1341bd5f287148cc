// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Hostile and honest operations, run in a box that the tests own.

#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/box/box.h"
#include "core/local_context.h"

namespace quirn::box {

// A folder of a test's own, gone after it.
class HostileFolder {
 public:
  HostileFolder();
  ~HostileFolder();
  HostileFolder(const HostileFolder&) = delete;
  HostileFolder& operator=(const HostileFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  InputFile input(const std::filesystem::path& name, std::string_view content) const;
  InputFile folder(const std::filesystem::path& name) const;
  // Every file beneath it, with its content.
  std::map<std::string, std::string> snapshot() const;

 private:
  std::filesystem::path path_;
};

// The program that finds the module of hostile operations.
std::filesystem::path hostileProgram();
// The program itself.
std::filesystem::path builtProgram();

// Small limits, so that nothing takes long.
BoxLimits testLimits();
// Shared by the tests that don't count its workers.
Box& testBox();

// A hostile operation, placed in the hostile module.
template <class Operation>
OperationType boxed() {
  return OperationType::of<Operation>().placedIn(Placement::boxed, "hostile");
}

// How a run ended, in words that can be compared: what it made, what failed, the error, the progress and the status.
struct Ran {
  std::map<std::string, std::string> outputs;   // by name
  std::map<std::string, std::string> failures;  // messages by name
  std::string summary;
  std::string error;  // kind, message and detail; or "cancelled", or a fault's text
  std::string progress;
  std::string status;

  bool operator==(const Ran&) const = default;
};
std::string describe(const Ran& ran);

Ran runIn(Box& box, const OperationType& type, const std::vector<InputFile>& inputs,
          const std::shared_ptr<OperationContext>& context, const OperationConfig* config = nullptr);
Ran runIn(Box& box, const OperationType& type, const std::vector<InputFile>& inputs);

// Whether a process is there and is no zombie.
bool isAlive(int process);
// The children of a process, by what the kernel says.
std::vector<int> childrenOf(int process);
// Looks again and again for at most 20 seconds.
bool soon(const std::function<bool()>& condition);

}  // namespace quirn::box
