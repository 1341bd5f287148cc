// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_source.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quirn::platform {
namespace {

// Objects are mostly small and scattered; what is longer is read past the buffer.
constexpr std::size_t bufferSize = 16 << 10;

bool isLineEnd(char character) {
  return character == '\r' || character == '\n';
}

}  // namespace

PDFSource::PDFSource(ReadableFile file) : file_(std::move(file)), buffer_(bufferSize) {}

void PDFSource::check() const {
  if (failure_) std::rethrow_exception(failure_);
}

const std::string& PDFSource::getName() const {
  static const std::string name = "file";
  return name;
}

std::size_t PDFSource::readAt(qpdf_offset_t offset, char* bytes, std::size_t count) {
  check();
  try {
    return file_.readAt(offset, std::as_writable_bytes(std::span(bytes, count)));
  } catch (const std::system_error&) {
    failure_ = std::current_exception();
    throw;
  }
}

std::string_view PDFSource::buffered() {
  if (position_ < bufferStart_ || position_ >= bufferStart_ + static_cast<qpdf_offset_t>(bufferLength_)) {
    bufferLength_ = 0;
    bufferLength_ = readAt(position_, buffer_.data(), buffer_.size());
    bufferStart_ = position_;
  }
  return std::string_view(buffer_.data(), bufferLength_).substr(static_cast<std::size_t>(position_ - bufferStart_));
}

std::size_t PDFSource::read(char* bytes, std::size_t count) {
  last_offset = position_;
  std::size_t done = 0;
  while (done < count) {
    std::size_t step = 0;
    if (count - done >= bufferSize) {
      step = readAt(position_, bytes + done, count - done);
    } else {
      const std::string_view here = buffered();
      step = std::min(here.size(), count - done);
      std::memcpy(bytes + done, here.data(), step);
    }
    if (step == 0) break;
    done += step;
    position_ += static_cast<qpdf_offset_t>(step);
  }
  return done;
}

// The offset at which the line ends, with the position behind the line end.
qpdf_offset_t PDFSource::findAndSkipNextEOL() {
  const auto move = [this](auto&& isWanted) {
    for (;;) {
      const std::string_view here = buffered();
      const auto found = std::ranges::find_if(here, isWanted);
      position_ += found - here.begin();
      if (here.empty() || found != here.end()) return position_;
    }
  };
  const qpdf_offset_t end = move(&isLineEnd);
  move([](char character) { return !isLineEnd(character); });
  return end;
}

void PDFSource::seek(qpdf_offset_t offset, int whence) {
  const qpdf_offset_t base = whence == SEEK_CUR ? position_ : whence == SEEK_END ? file_.size() : 0;
  qpdf_offset_t target = 0;
  if (__builtin_add_overflow(base, offset, &target) || target < 0)
    throw std::runtime_error("seek before the beginning");
  position_ = target;
}

void PDFSource::unreadCh(char) {
  seek(-1, SEEK_CUR);
}

}  // namespace quirn::platform
