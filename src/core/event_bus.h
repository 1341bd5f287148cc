// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What one part of the program tells others without knowing them. It belongs to the interface
// thread.

#pragma once

#include <any>
#include <functional>
#include <map>
#include <string_view>

#include "core/signal.h"

namespace quirn {

// A notification of that name carries a Payload, always.
template <class Payload>
struct Notification {
  std::string_view name;
};

struct NoPayload {};

class EventBus {
 public:
  // The one that the program uses.
  static EventBus& shared();

  template <class Payload>
  [[nodiscard]] Subscription subscribe(const Notification<Payload>& notification,
                                       std::function<void(const Payload&)> observer) {
    return signals_[notification.name].subscribe([observer = std::move(observer)](const std::any& payload) {
      observer(*std::any_cast<const Payload*>(payload));
    });
  }

  // Calls the observers before it returns.
  template <class Payload>
  void post(const Notification<Payload>& notification, const Payload& payload) {
    signals_[notification.name].emit(std::any(&payload));
  }
  void post(const Notification<NoPayload>& notification) { post(notification, NoPayload()); }

 private:
  std::map<std::string_view, Signal<std::any>> signals_;
};

}  // namespace quirn
