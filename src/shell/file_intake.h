// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Takes in files on another thread, since looking at them can wait for a disk or a network, and
// hands them over on the interface thread in the order in which they were asked for.

#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "core/input_file.h"
#include "platform/main_queue.h"

namespace quirn {

// Belongs to the interface thread.
class FileIntake {
 public:
  using Completion = std::function<void(Intake)>;

  // `queue` outlives what is under way.
  explicit FileIntake(platform::MainQueue& queue) : queue_(queue) {}
  FileIntake(const FileIntake&) = delete;
  FileIntake& operator=(const FileIntake&) = delete;
  ~FileIntake() = default;

  // `completion` is not called any more once this object is gone.
  void take(std::vector<std::filesystem::path> locations, Completion completion);

 private:
  struct Order {
    std::vector<std::filesystem::path> locations;
    Completion completion;
  };

  void startNext();
  void finish(Intake intake);

  platform::MainQueue& queue_;
  std::deque<Order> orders_;  // the first is under way
  std::shared_ptr<FileIntake*> self_ = std::make_shared<FileIntake*>(this);
};

}  // namespace quirn
