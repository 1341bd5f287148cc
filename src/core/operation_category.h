// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The families that operations and suggestions are ordered by.

#pragma once

namespace quirn {

enum class OperationCategory {
  pdf,
  image,
  capture,
  audio,
  video,
  archive,
  text,
  office,
  dev,
  color,
  time,
  contacts,
  subtitles,
  geo,
  vector,
  utility,
  ai,
};

}  // namespace quirn
