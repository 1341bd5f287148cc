// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Where work from outside the window comes in: links of the "quirn" scheme, files that the desktop
// opens or a service menu hands over, and the named actions. It becomes either a notification to the
// window or a run without one.
//
//   quirn://run?op={id}&path={file}&path={file}
//   quirn://open?path={file}
//
// docs/requests.md tells what becomes of links that are not quite like that.

#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/notifications.h"
#include "core/registry.h"
#include "core/runner.h"

namespace quirn {

// All of it belongs to the interface thread.
class QuirnRouter {
 public:
  // All three outlive the router, and `queue` the runs.
  QuirnRouter(const OperationRegistry& registry, EventBus& events, platform::MainQueue& queue)
      : registry_(registry), events_(events), queue_(queue) {}

  // What the desktop asks to open: quirn URLs, file URLs and plain paths. Each quirn URL is handled
  // by itself; the files are posted together, as "quirn.openURLs". Anything else is passed over.
  void handle(std::span<const std::string> locations) const;

  // A URL of the quirn scheme: posts "quirn.runOpOnURLs" for host "run" with an "op", else
  // "quirn.openURLs" if it names files. False if there was nothing to post.
  bool handleURL(std::string_view url) const;

  // Runs a request without a window. Locations that can't be read are left out and told among the
  // failures of the result. Throws unsupportedInput, with nothing started, if there is no such
  // operation, if it needs its editor, if no location can be read, or if it can't run on the files.
  [[nodiscard]] Run run(const QuirnRunRequest& request, std::optional<std::filesystem::path> outputDirectory,
                        OperationRunner::Completion completion) const;

 private:
  const OperationRegistry& registry_;
  EventBus& events_;
  platform::MainQueue& queue_;
};

// The object behind the desktop's service menu: what it is given goes to the window.
class QuirnServiceProvider {
 public:
  explicit QuirnServiceProvider(EventBus& events) : events_(events) {}

  void open(std::span<const std::filesystem::path> files) const;

 private:
  EventBus& events_;
};

}  // namespace quirn
