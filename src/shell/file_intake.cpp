// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/file_intake.h"

#include <utility>

#include "platform/task_pool.h"

namespace quirn {

void FileIntake::take(std::vector<std::filesystem::path> locations, Completion completion) {
  orders_.push_back({std::move(locations), std::move(completion)});
  if (orders_.size() == 1) startNext();
}

void FileIntake::startNext() {
  platform::TaskPool::shared().submit(
      [&queue = queue_, weak = std::weak_ptr(self_), locations = std::move(orders_.front().locations)] {
        Intake taken = takeIn(locations);
        // Found out here, so that the interface thread never waits for a look into a file.
        for (const InputFile& input : taken.files) static_cast<void>(input.contentType.mimeType());
        queue.post([weak, intake = std::move(taken)]() mutable {
          if (const auto self = weak.lock()) (*self)->finish(std::move(intake));
        });
      });
}

void FileIntake::finish(Intake intake) {
  const Completion completion = std::move(orders_.front().completion);
  orders_.pop_front();
  if (!orders_.empty()) startNext();
  completion(std::move(intake));
}

}  // namespace quirn
